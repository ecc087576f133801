#include "common/LogCapture.h"
#include "input/HotKeyManager.h"
#include "input/KeyboardShortcut.h"
#include "fakes/FakeApplicationActivity.h"
#include "fakes/FakeHotKeyService.h"
#include "storage/UserDefaultsStore.h"

#include <QTemporaryDir>
#include <QTest>

using namespace KeyboardShortcut;

namespace {
constexpr HotKeyId kToggle{HotKeyManager::mainAppSignature, 1};
HotKeyId space(quint32 id) { return {HotKeyManager::spaceSignature, id}; }
constexpr quint32 kKey1 = 18, kKey2 = 19, kKey4 = 21;
}

class HotKeyManagerTest : public QObject {
    Q_OBJECT

    QTemporaryDir dir;
    std::shared_ptr<UserDefaultsStore> store;
    std::unique_ptr<FakeHotKeyService> service;
    FakeApplicationActivity activity;

    std::unique_ptr<HotKeyManager> make()
    {
        return std::make_unique<HotKeyManager>(store, *service, activity);
    }

private Q_SLOTS:
    void init()
    {
        store = std::make_shared<UserDefaultsStore>(QStringLiteral("hotkeys"), QStringLiteral("hotkeys"), dir.path());
        for (const QString &key : store->persistedKeys())
            store->removeObject(key);
        service = std::make_unique<FakeHotKeyService>();
        activity.active = false;
    }

    void comesUpAsCommandFourAndRegistersNothing()
    {
        auto manager = make();
        QVERIFY(manager->isEnabled());
        QCOMPARE(manager->currentKeyCode(), kKey4);
        QCOMPARE(manager->currentModifiers(), kCommandFlag);
        QCOMPARE(manager->displayText(), QStringLiteral("⌘4"));
        QCOMPARE(service->handlersInstalled, 0);
        QCOMPARE(service->registerCalls, 0);
        QVERIFY(store->persistedKeys().isEmpty());
    }

    void storedKeyCode_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<qint64>("keyCode"); // -1: start-up must stop
        QTest::newRow("absent") << QVariant() << qint64(21);
        QTest::newRow("zero") << QVariant(qint64(0)) << qint64(0);
        QTest::newRow("largest") << QVariant(qint64(4294967295LL)) << qint64(4294967295LL);
        QTest::newRow("one past 32 bits") << QVariant(qint64(4294967296LL)) << qint64(-1);
        QTest::newRow("negative") << QVariant(qint64(-1)) << qint64(-1);
        QTest::newRow("unsigned") << QVariant(quint64(12)) << qint64(12);
        QTest::newRow("whole double") << QVariant(5.0) << qint64(5);
        QTest::newRow("fraction") << QVariant(5.5) << qint64(21);
        QTest::newRow("text") << QVariant(QStringLiteral("12")) << qint64(21);
        QTest::newRow("boolean") << QVariant(true) << qint64(21);
    }

    void storedKeyCode()
    {
        QFETCH(QVariant, stored);
        QFETCH(qint64, keyCode);
        store->set(stored, QLatin1String(HotKeyManager::kKeyCodeKey));
        const StoredKeyCode result = HotKeyManager::storedKeyCode(*store);
        if (keyCode < 0) {
            QVERIFY(result.error.contains(QLatin1String("\"hotKey.keyCode\"")));
            QVERIFY(result.error.contains(QString::number(stored.toLongLong())));
        } else {
            QCOMPARE(result.error, QString());
            QCOMPARE(qint64(result.keyCode), keyCode);
        }
    }

    void storedModifiersAndSwitch()
    {
        store->set(quint64(kOptionFlag | kShiftFlag), QLatin1String(HotKeyManager::kModifiersKey));
        store->set(false, QLatin1String(HotKeyManager::kEnabledKey));
        auto manager = make();
        QCOMPARE(manager->currentModifiers(), kOptionFlag | kShiftFlag);
        QVERIFY(!manager->isEnabled());
        manager->registerHotKey();
        QCOMPARE(service->handlersInstalled, 1);
        QVERIFY(service->live().isEmpty());

        store->set(QStringLiteral("cmd"), QLatin1String(HotKeyManager::kModifiersKey));
        QCOMPARE(make()->currentModifiers(), kCommandFlag);
    }

    void modifierConversion_data()
    {
        QTest::addColumn<quint64>("flags");
        QTest::addColumn<quint32>("mask");
        QTest::newRow("command") << kCommandFlag << 0x100u;
        QTest::newRow("shift") << kShiftFlag << 0x200u;
        QTest::newRow("option") << kOptionFlag << 0x800u;
        QTest::newRow("control") << kControlFlag << 0x1000u;
        QTest::newRow("all four") << (kCommandFlag | kOptionFlag | kShiftFlag | kControlFlag) << 0x1B00u;
        // Caps Lock, numeric pad, help and function are dropped.
        QTest::newRow("others dropped") << (quint64(0x10000) | 0x200000 | 0x400000 | 0x800000 | kControlFlag)
                                        << 0x1000u;
        QTest::newRow("none") << quint64(0) << 0u;
    }

    void modifierConversion()
    {
        QFETCH(quint64, flags);
        QFETCH(quint32, mask);
        QCOMPARE(carbonModifiers(flags), mask);
        // Every registration goes through the same conversion.
        auto manager = make();
        manager->updateHotKey(flags, kKey1);
        const auto live = service->find(kToggle);
        QVERIFY(live);
        QCOMPARE(live->modifiers, mask);
    }

    void registeredToggleIsDispatchedOnTheMainLoop()
    {
        auto manager = make();
        int toggles = 0;
        manager->setOnToggle([&] { ++toggles; });
        manager->registerHotKey();
        manager->registerHotKey(); // replaces the toggle, keeps the one handler
        QCOMPARE(service->handlersInstalled, 1);
        QCOMPARE(service->live().size(), 1);
        QCOMPARE(service->unregisterCalls, 1);
        QVERIFY(service->pressCombination(kKey4, kCmdKey));
        QCOMPARE(toggles, 0); // posted, not run inside the handler
        QCoreApplication::processEvents();
        QCOMPARE(toggles, 1);

        // Only id 1 of "LPAD" is the toggle.
        service->press({HotKeyManager::mainAppSignature, 2});
        service->press({fourCharCode("XXXX"), 1});
        QCoreApplication::processEvents();
        QCOMPARE(toggles, 1);
    }

    void pressAfterTheManagerIsGoneDoesNothing()
    {
        int toggles = 0;
        {
            auto manager = make();
            manager->setOnToggle([&] { ++toggles; });
            manager->registerHotKey();
            service->press(kToggle);
        }
        service->press(kToggle);
        QCoreApplication::processEvents();
        QCOMPARE(toggles, 0);
    }

    void disablingDropsTheToggleAndEnablingRegistersTheCurrentShortcut()
    {
        auto manager = make();
        manager->registerHotKey();
        const int registrations = service->registerCalls;

        manager->setEnabled(true); // unchanged: nothing at all
        QVERIFY(!store->persistedObject(QLatin1String(HotKeyManager::kEnabledKey)).isValid());
        QCOMPARE(service->registerCalls, registrations);

        manager->setEnabled(false);
        QCOMPARE(store->persistedObject(QLatin1String(HotKeyManager::kEnabledKey)), QVariant(false));
        QVERIFY(service->live().isEmpty());
        QVERIFY(!manager->isToggleRegistered());

        // A new shortcut while disabled is stored, not registered.
        manager->updateHotKey(kControlFlag | kShiftFlag, kKey2);
        QCOMPARE(service->registerCalls, registrations);
        QCOMPARE(store->persistedObject(QLatin1String(HotKeyManager::kKeyCodeKey)), QVariant(qint64(kKey2)));
        QCOMPARE(store->persistedObject(QLatin1String(HotKeyManager::kModifiersKey)),
                 QVariant(quint64(kControlFlag | kShiftFlag)));

        manager->setEnabled(true);
        QCOMPARE(store->persistedObject(QLatin1String(HotKeyManager::kEnabledKey)), QVariant(true));
        const auto live = service->find(kToggle);
        QVERIFY(live);
        QCOMPARE(live->keyCode, kKey2);
        QCOMPARE(live->modifiers, kControlKey | kShiftKey);
        QCOMPARE(service->handlersInstalled, 1); // the handler outlives disabling

        // A fresh manager reads the new shortcut back.
        auto reread = make();
        QCOMPARE(reread->currentKeyCode(), kKey2);
        QCOMPARE(reread->displayText(), QStringLiteral("⇧⌃2"));
    }

    void updateTruncatesAndFreesTheOldCombination()
    {
        auto manager = make();
        manager->registerHotKey();
        manager->updateHotKey(kCommandFlag, (qint64(1) << 32) + kKey1); // kept to its low 32 bits
        QCOMPARE(manager->currentKeyCode(), kKey1);
        QCOMPARE(store->persistedObject(QLatin1String(HotKeyManager::kKeyCodeKey)), QVariant(qint64(kKey1)));
        QCOMPARE(service->live().size(), 1);
        QCOMPARE(service->find(kToggle)->keyCode, kKey1);
        // The old combination is free again for a Space.
        manager->updateSpaceHotKeys({{QUuid::createUuid(), QStringLiteral("S"), kKey4, kCommandFlag}});
        QVERIFY(service->find(space(2)));
    }

    void stopDropsOnlyTheToggle()
    {
        auto manager = make();
        manager->registerHotKey();
        manager->updateSpaceHotKeys({{QUuid::createUuid(), QStringLiteral("S"), kKey1, kCommandFlag}});
        manager->stop();
        QVERIFY(!service->find(kToggle));
        QVERIFY(service->find(space(2)));
        QCOMPARE(service->handlersInstalled, 1);
        manager->stop(); // nothing left to drop
        QCOMPARE(service->live().size(), 1);
    }

    void spaceIdsFollowListPositions()
    {
        LogCapture log;
        auto manager = make();
        const QUuid a = QUuid::createUuid(), b = QUuid::createUuid();
        manager->updateSpaceHotKeys({{a, QStringLiteral("A"), std::nullopt, std::nullopt},
                                     {b, QStringLiteral("B"), kKey1, kCommandFlag}});
        QCOMPARE(manager->hotKeyIdForSpace(b), std::optional<quint32>(3));
        QCOMPARE(manager->hotKeyIdForSpace(a), std::nullopt);
        QCOMPARE(service->find(space(3))->keyCode, kKey1);
        QCOMPARE(log.messages(),
                 QStringList({QStringLiteral("updateSpaceHotKeys called for 2 spaces"),
                              QStringLiteral("Space 'A' has no hotkey configured"),
                              QStringLiteral("Registering hotkey for Space 'B': keyCode=18, modifiers=1048576, hotKeyId=3"),
                              QStringLiteral("Registered Space hotkey: id=3, keyCode=18, modifiers=256"),
                              QStringLiteral("Registered 1 Space hotkeys")}));
        // A Space with only one half of a shortcut has none.
        manager->updateSpaceHotKeys({{a, QStringLiteral("A"), kKey1, std::nullopt}});
        QCOMPARE(manager->hotKeyIdForSpace(a), std::nullopt);
    }

    void spaceUpdatesReplaceRegistrationsAndPressesActWhileInFront()
    {
        LogCapture log;
        auto manager = make();
        QList<QUuid> switched;
        manager->setSpaceHotKeyCallback([&](const QUuid &id) { switched.append(id); });
        const QUuid a = QUuid::createUuid(), b = QUuid::createUuid();
        manager->updateSpaceHotKeys({{a, QStringLiteral("A"), kKey1, kCommandFlag},
                                     {b, QStringLiteral("B"), kKey2, kCommandFlag}});
        QCOMPARE(service->handlersInstalled, 1);
        QVERIFY(service->find(kToggle)); // installing the handler registered the toggle too

        // Another application in front: the press is consumed, no switch.
        service->pressCombination(kKey1, kCmdKey);
        QCoreApplication::processEvents();
        QVERIFY(switched.isEmpty());

        // Reordered: the same Space gets another id.
        manager->updateSpaceHotKeys({{b, QStringLiteral("B"), kKey2, kCommandFlag}});
        QCOMPARE(log.count(QStringLiteral("Unregistered Space hotkey ref")), 2);
        QCOMPARE(manager->hotKeyIdForSpace(b), std::optional<quint32>(2));
        QCOMPARE(manager->hotKeyIdForSpace(a), std::nullopt);
        QCOMPARE(service->live().size(), 2); // toggle and B
        QCOMPARE(service->find(space(2))->keyCode, kKey2);

        activity.active = true;
        service->pressCombination(kKey2, kCmdKey);
        service->press(space(3)); // B's old id
        service->press(space(7)); // no Space has this id
        QCoreApplication::processEvents();
        QCOMPARE(switched, QList<QUuid>{b});

        manager->updateSpaceHotKeys({});
        QCOMPARE(service->live().size(), 1);
        QVERIFY(service->find(kToggle));
    }

    void failedSpaceRegistrationKeepsItsId()
    {
        LogCapture log;
        auto manager = make();
        manager->registerHotKey();
        service->takenElsewhere.append({kKey2, kCmdKey});
        const QUuid a = QUuid::createUuid(), b = QUuid::createUuid(), c = QUuid::createUuid();
        manager->updateSpaceHotKeys({{a, QStringLiteral("A"), kKey4, kCommandFlag}, // same as the toggle
                                     {b, QStringLiteral("B"), kKey2, kCommandFlag},
                                     {c, QStringLiteral("C"), kKey1, kCommandFlag}});
        QVERIFY(log.contains(QStringLiteral("Failed to register Space hotkey: status=-9878, keyCode=21, modifiers=256, hotKeyId=2")));
        QVERIFY(log.contains(QStringLiteral("Failed to register Space hotkey: status=-9878, keyCode=19, modifiers=256, hotKeyId=3")));
        QVERIFY(log.contains(QStringLiteral("Registered 3 Space hotkeys")));
        QCOMPARE(manager->hotKeyIdForSpace(a), std::optional<quint32>(2));
        QCOMPARE(manager->hotKeyIdForSpace(b), std::optional<quint32>(3));
        QCOMPARE(service->find(space(4))->keyCode, kKey1);

        // Only the live registration is unregistered next time.
        const int unregisters = service->unregisterCalls;
        manager->updateSpaceHotKeys({});
        QCOMPARE(service->unregisterCalls, unregisters + 1);
    }

    void displayText_data()
    {
        QTest::addColumn<quint64>("flags");
        QTest::addColumn<quint32>("keyCode");
        QTest::addColumn<QString>("text");
        QTest::newRow("fixed modifier order")
            << (kControlFlag | kShiftFlag | kOptionFlag | kCommandFlag) << 0u << QStringLiteral("⌘⌥⇧⌃A");
        QTest::newRow("no modifiers") << quint64(0) << 49u << QStringLiteral("Space");
        QTest::newRow("escape") << kShiftFlag << 53u << QStringLiteral("⇧Esc");
        QTest::newRow("gap at 10") << quint64(0) << 10u << QStringLiteral("KeyCode(10)");
        QTest::newRow("gap at 52") << kCommandFlag << 52u << QStringLiteral("⌘KeyCode(52)");
        QTest::newRow("beyond the table") << quint64(0) << 122u << QStringLiteral("KeyCode(122)");
        QTest::newRow("caps lock shows nothing") << quint64(0x10000) << 21u << QStringLiteral("4");
    }

    void displayText()
    {
        QFETCH(quint64, flags);
        QFETCH(quint32, keyCode);
        QFETCH(QString, text);
        QCOMPARE(KeyboardShortcut::displayText(flags, keyCode), text);
    }
};

QTEST_GUILESS_MAIN(HotKeyManagerTest)
#include "tst_hotkeymanager.moc"
