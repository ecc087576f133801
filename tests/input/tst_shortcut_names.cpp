#include "input/KeyboardShortcut.h"
#include "input/ShortcutNames.h"

#include <QTest>

using namespace KeyboardShortcut;

class ShortcutNamesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // What a user types, the stored key code and flags it means, and how it
    // is written back; an empty "shown" marks a text that is refused.
    void parseAndFormat_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<quint32>("keyCode");
        QTest::addColumn<quint64>("flags");
        QTest::addColumn<QString>("shown");

        QTest::newRow("super+4") << "super+4" << 21u << kCommandFlag << "Super+4";
        QTest::newRow("meta and win are super") << "Meta+Win+4" << 21u << kCommandFlag << "Super+4";
        QTest::newRow("written in a fixed order") << "super+shift+alt+ctrl+l" << 37u
                                                  << (kCommandFlag | kShiftFlag | kOptionFlag | kControlFlag)
                                                  << "Ctrl+Alt+Shift+Super+L";
        QTest::newRow("control") << "CONTROL+Alt+Delete" << 117u << (kControlFlag | kOptionFlag) << "Ctrl+Alt+Delete";
        QTest::newRow("shift+digit keeps the digit") << "shift+1" << 18u << kShiftFlag << "Shift+1";
        QTest::newRow("shift+f5") << "shift+f5" << 96u << kShiftFlag << "Shift+F5";
        QTest::newRow("f12 alone") << "f12" << 111u << quint64(0) << "F12";
        QTest::newRow("f24") << "ctrl+F24" << 131u << kControlFlag << "Ctrl+F24";
        QTest::newRow("page up, spaced") << "alt+Page Up" << 116u << kOptionFlag << "Alt+Page Up";
        QTest::newRow("page_down") << "alt+page_down" << 121u << kOptionFlag << "Alt+Page Down";
        QTest::newRow("return is enter") << "ctrl+return" << 36u << kControlFlag << "Ctrl+Enter";
        QTest::newRow("escape") << "super+escape" << 53u << kCommandFlag << "Super+Esc";
        QTest::newRow("arrows") << "super+left" << 123u << kCommandFlag << "Super+Left";
        QTest::newRow("backspace is not delete") << "ctrl+backspace" << 51u << kControlFlag << "Ctrl+Backspace";
        QTest::newRow("punctuation by name") << "ctrl+slash" << 44u << kControlFlag << "Ctrl+/";
        QTest::newRow("punctuation as typed") << "ctrl+-" << 27u << kControlFlag << "Ctrl+-";
        QTest::newRow("spaces around parts") << " ctrl + space " << 49u << kControlFlag << "Ctrl+Space";

        QTest::newRow("unknown key") << "super+foo" << 0u << quint64(0) << "";
        QTest::newRow("unknown modifier") << "hyper+4" << 0u << quint64(0) << "";
        QTest::newRow("modifiers only") << "ctrl+alt" << 0u << quint64(0) << "";
        QTest::newRow("two keys") << "ctrl+a+b" << 0u << quint64(0) << "";
        QTest::newRow("empty part") << "ctrl++" << 0u << quint64(0) << "";
        QTest::newRow("nothing") << "" << 0u << quint64(0) << "";
        QTest::newRow("f25") << "f25" << 0u << quint64(0) << "";
    }

    void parseAndFormat()
    {
        QFETCH(QString, typed);
        QFETCH(quint32, keyCode);
        QFETCH(quint64, flags);
        QFETCH(QString, shown);

        const auto parsed = ShortcutNames::parse(typed);
        if (shown.isEmpty()) {
            QVERIFY2(!parsed, qPrintable(typed));
            return;
        }
        QVERIFY2(parsed, qPrintable(typed));
        QCOMPARE(parsed->keyCode, keyCode);
        QCOMPARE(parsed->modifierFlags, flags);
        QCOMPARE(ShortcutNames::format(keyCode, flags), shown);
        // What format writes reads back as the same shortcut.
        QCOMPARE(ShortcutNames::parse(shown), parsed);
    }

    // Every named key of the capture table has a PC name that reads back,
    // and only function keys may be a shortcut on their own.
    void everyCapturedKeyHasAName()
    {
        for (const VirtualKey &key : namedKeys()) {
            const QString shown = ShortcutNames::format(key.code, kControlFlag);
            QCOMPARE(ShortcutNames::parse(shown), (ShortcutNames::Shortcut{key.code, kControlFlag}));
            QVERIFY(!ShortcutNames::standsAlone(key.code));
        }
        QVERIFY(ShortcutNames::standsAlone(ShortcutNames::parse(QStringLiteral("f1"))->keyCode));
        QCOMPARE(ShortcutNames::format(200, kShiftFlag), QStringLiteral("Shift+Key 200"));
    }
};

QTEST_GUILESS_MAIN(ShortcutNamesTest)
#include "tst_shortcut_names.moc"
