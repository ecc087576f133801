#include "common/XvfbServer.h"
#include "input/KeyboardShortcut.h"
#include "platform/linux/XcbHotKeyService.h"

#include <QTest>

using namespace KeyboardShortcut;

namespace {
constexpr HotKeyId kToggle{fourCharCode("LPAD"), 1};
constexpr quint32 kKeyA = 0, kKeyZ = 6, kKey4 = 21, kKey5 = 23;
// Pressed after the keys under test: events of one server arrive in order,
// so once the sentinel is in, every press before it is too.
constexpr HotKeyId kSentinel{fourCharCode("SENT"), 0};
const QString kSentinelKeys = QStringLiteral("super+ctrl+alt+shift+z");
using Presses = std::optional<QList<HotKeyId>>;
}

// The X11 hot-key adaptor against a real X server.
class XcbHotKeysTest : public QObject {
    Q_OBJECT

    std::unique_ptr<XvfbServer> server;
    std::unique_ptr<XcbHotKeyService> service;
    QList<HotKeyId> pressed;

    // The presses the keys produce; none when they could not be sent or the
    // sentinel never came back.
    Presses pressesAfter(const QString &keys)
    {
        pressed.clear();
        if (!server->xdotool({QStringLiteral("key"), keys}) || !server->xdotool({QStringLiteral("key"), kSentinelKeys}))
            return std::nullopt;
        QDeadlineTimer deadline(10000);
        while (!pressed.contains(kSentinel) && !deadline.hasExpired())
            QTest::qWait(5);
        const qsizetype sentinel = pressed.indexOf(kSentinel);
        return sentinel < 0 ? Presses() : Presses(pressed.first(sentinel));
    }

private Q_SLOTS:
    void initTestCase()
    {
        if (!XvfbServer::haveTools())
            QSKIP("Xvfb and xdotool are needed");
        server = std::make_unique<XvfbServer>();
        QVERIFY2(server->isRunning(), "Xvfb did not start");
    }

    void init()
    {
        service = std::make_unique<XcbHotKeyService>(server->display());
        QVERIFY(service->isConnected());
        service->installHandler([this](HotKeyId id) { pressed.append(id); });
        pressed.clear();
        QCOMPARE(service->registerHotKey(kKeyZ, kCmdKey | kControlKey | kOptionKey | kShiftKey, kSentinel).status,
                 HotKeyService::kNoErr);
    }

    void cleanup() { service.reset(); }

    void everyNamedKeyHasAKeycode()
    {
        for (const VirtualKey &key : namedKeys()) {
            const auto r = service->registerHotKey(key.code, kCmdKey | kControlKey, {fourCharCode("TEST"), key.code});
            QVERIFY2(r.status == HotKeyService::kNoErr, key.name);
            QCOMPARE(service->unregisterHotKey(r.handle), HotKeyService::kNoErr);
        }
        QCOMPARE(service->registerHotKey(10, kCmdKey, kToggle).status, HotKeyService::kHotKeyInvalidErr);
    }

    void superFourIsDelivered()
    {
        QCOMPARE(service->registerHotKey(kKey4, kCmdKey, kToggle).status, HotKeyService::kNoErr);
        QCOMPARE(pressesAfter(QStringLiteral("super+4")), Presses({kToggle}));
        QVERIFY(pressesAfter(QStringLiteral("4")) == Presses(QList<HotKeyId>()));
        QVERIFY(pressesAfter(QStringLiteral("super+5")) == Presses(QList<HotKeyId>()));
        QVERIFY(pressesAfter(QStringLiteral("super+shift+4")) == Presses(QList<HotKeyId>()));
    }

    void lockKeysDoNotMatter()
    {
        service->registerHotKey(kKey4, kCmdKey, kToggle);
        QVERIFY(server->xdotool({QStringLiteral("key"), QStringLiteral("Num_Lock")}));
        QCOMPARE(pressesAfter(QStringLiteral("super+4")), Presses({kToggle}));
        QVERIFY(server->xdotool({QStringLiteral("key"), QStringLiteral("Caps_Lock")}));
        QCOMPARE(pressesAfter(QStringLiteral("super+4")), Presses({kToggle}));
        QVERIFY(server->xdotool({QStringLiteral("key"), QStringLiteral("Num_Lock")}));
        QCOMPARE(pressesAfter(QStringLiteral("super+4")), Presses({kToggle}));
        QVERIFY(server->xdotool({QStringLiteral("key"), QStringLiteral("Caps_Lock")}));
    }

    void modifiersAreExact()
    {
        const HotKeyId id{fourCharCode("SPAD"), 2};
        QCOMPARE(service->registerHotKey(kKeyA, kOptionKey | kShiftKey | kControlKey, id).status, HotKeyService::kNoErr);
        QCOMPARE(pressesAfter(QStringLiteral("ctrl+alt+shift+a")), Presses({id}));
        QVERIFY(pressesAfter(QStringLiteral("alt+a")) == Presses(QList<HotKeyId>()));
        QVERIFY(pressesAfter(QStringLiteral("ctrl+alt+shift+super+a")) == Presses(QList<HotKeyId>()));
    }

    void unregisteredKeysAreNotDelivered()
    {
        const auto r = service->registerHotKey(kKey5, kCmdKey, kToggle);
        QCOMPARE(pressesAfter(QStringLiteral("super+5")), Presses({kToggle}));
        QCOMPARE(service->unregisterHotKey(r.handle), HotKeyService::kNoErr);
        QVERIFY(pressesAfter(QStringLiteral("super+5")) == Presses(QList<HotKeyId>()));
        QCOMPARE(service->unregisterHotKey(r.handle), HotKeyService::kHotKeyInvalidErr);
    }

    void aCombinationHeldElsewhereFails()
    {
        const auto mine = service->registerHotKey(kKey4, kCmdKey, kToggle);
        QCOMPARE(mine.status, HotKeyService::kNoErr);
        // The same process twice: refused like the facility refuses it.
        QCOMPARE(service->registerHotKey(kKey4, kCmdKey, {fourCharCode("SPAD"), 2}).status,
                 HotKeyService::kHotKeyExistsErr);

        XcbHotKeyService other(server->display());
        const auto theirs = other.registerHotKey(kKey4, kCmdKey, kToggle);
        QVERIFY(theirs.status != HotKeyService::kNoErr);
        QCOMPARE(theirs.handle, HotKeyService::Handle(0));
        // The failed attempt must not have taken our grab away.
        QCOMPARE(pressesAfter(QStringLiteral("super+4")), Presses({kToggle}));

        service->unregisterHotKey(mine.handle);
        QCOMPARE(other.registerHotKey(kKey4, kCmdKey, kToggle).status, HotKeyService::kNoErr);
    }
};

QTEST_GUILESS_MAIN(XcbHotKeysTest)
#include "tst_xcbhotkeys.moc"
