// Recording a new toggle shortcut from a key press.
#include "input/KeyboardShortcut.h"
#include "input/ShortcutNames.h"
#include "ui/ShortcutCapture.h"

#include <QTest>

using ShortcutCapture::fromKeyPress;

class ShortcutCaptureTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void keyPressesBecomeStoredShortcuts()
    {
        // Super+4 is the default: Command flag and key code 21, shown as "⌘4".
        const auto superFour = fromKeyPress(Qt::Key_4, Qt::MetaModifier);
        QVERIFY(superFour);
        QCOMPARE(superFour->keyCode, 21u);
        QCOMPARE(KeyboardShortcut::displayText(superFour->modifierFlags, superFour->keyCode), QStringLiteral("⌘4"));

        const auto ctrlAltSpace = fromKeyPress(Qt::Key_Space, Qt::ControlModifier | Qt::AltModifier);
        QVERIFY(ctrlAltSpace);
        QCOMPARE(ctrlAltSpace->modifierFlags, KeyboardShortcut::kControlFlag | KeyboardShortcut::kOptionFlag);
        QCOMPARE(ctrlAltSpace->keyCode, 49u);
        QCOMPARE(fromKeyPress(Qt::Key_L, Qt::MetaModifier | Qt::ShiftModifier)->keyCode, 37u);
        QCOMPARE(fromKeyPress(Qt::Key_Return, Qt::MetaModifier)->keyCode, 36u);

        QVERIFY(!fromKeyPress(Qt::Key_4, Qt::NoModifier));       // no modifier: typing, not a shortcut
        QVERIFY(!fromKeyPress(Qt::Key_Meta, Qt::MetaModifier));  // the modifier alone
        QVERIFY(!fromKeyPress(Qt::Key_Launch0, Qt::MetaModifier)); // a key without a name
        // Function keys stand alone; Shift+1 is the 1 key with Shift, as PC users read it.
        QCOMPARE(fromKeyPress(Qt::Key_F5, Qt::NoModifier)->modifierFlags, 0u);
        const auto shiftOne = fromKeyPress(Qt::Key_Exclam, Qt::ShiftModifier);
        QVERIFY(shiftOne);
        QCOMPARE(ShortcutNames::format(shiftOne->keyCode, shiftOne->modifierFlags), QStringLiteral("Shift+1"));
    }
};

QTEST_GUILESS_MAIN(ShortcutCaptureTest)
#include "test_shortcut_capture.moc"
