#include "ui/ShortcutCapture.h"

#include "input/KeyboardShortcut.h"
#include "input/ShortcutNames.h"

#include <QKeySequence>

namespace ShortcutCapture {

namespace {
// The key's name as ShortcutNames reads it. With Shift held, Qt reports the
// shifted symbol; the key pressed is the one under it on the ANSI layout.
QString keyText(int qtKey, bool shift)
{
    static const QString shifted = QStringLiteral("!@#$%^&*()_+{}|:\"<>?~");
    static const QString plain = QStringLiteral("1234567890-=[]\\;',./`");
    if (shift && qtKey < 0x80) {
        const int at = shifted.indexOf(QChar(qtKey));
        if (at >= 0)
            return plain.at(at);
    }
    switch (qtKey) {
    case Qt::Key_Enter: return QStringLiteral("return");
    case Qt::Key_Backtab: return QStringLiteral("tab");
    default: return QKeySequence(qtKey).toString(QKeySequence::PortableText).toLower();
    }
}
}

std::optional<Shortcut> fromKeyPress(int qtKey, Qt::KeyboardModifiers modifiers)
{
    switch (qtKey) {
    case Qt::Key_Meta: case Qt::Key_Super_L: case Qt::Key_Super_R: case Qt::Key_Control:
    case Qt::Key_Alt: case Qt::Key_AltGr: case Qt::Key_Shift: case Qt::Key_unknown:
        return std::nullopt; // a modifier alone: the key is still to come
    default: break;
    }
    quint64 flags = 0;
    if (modifiers & Qt::MetaModifier)
        flags |= KeyboardShortcut::kCommandFlag;
    if (modifiers & Qt::AltModifier)
        flags |= KeyboardShortcut::kOptionFlag;
    if (modifiers & Qt::ControlModifier)
        flags |= KeyboardShortcut::kControlFlag;
    if (modifiers & Qt::ShiftModifier)
        flags |= KeyboardShortcut::kShiftFlag;
    const auto key = ShortcutNames::parse(keyText(qtKey, modifiers & Qt::ShiftModifier));
    if (!key)
        return std::nullopt;
    // Without a modifier only keys no application types with (F1...F24) are
    // taken: a bare letter grabbed globally would be lost to every window.
    if (flags == 0 && !ShortcutNames::standsAlone(key->keyCode))
        return std::nullopt;
    return Shortcut{flags, key->keyCode};
}

}
