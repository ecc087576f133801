// Recording a new toggle shortcut from a key press.
#include "input/KeyboardShortcut.h"
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
        QVERIFY(!fromKeyPress(Qt::Key_F13, Qt::MetaModifier));   // not in the key table
    }
};

QTEST_GUILESS_MAIN(ShortcutCaptureTest)
#include "test_shortcut_capture.moc"
