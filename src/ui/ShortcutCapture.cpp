#include "ui/ShortcutCapture.h"

#include "input/KeyboardShortcut.h"

#include <QKeySequence>

namespace ShortcutCapture {

namespace {
QString tableName(int qtKey)
{
    switch (qtKey) {
    case Qt::Key_Return:
    case Qt::Key_Enter: return QStringLiteral("Return");
    case Qt::Key_Tab: return QStringLiteral("Tab");
    case Qt::Key_Space: return QStringLiteral("Space");
    case Qt::Key_Backspace: return QStringLiteral("Delete");
    case Qt::Key_Escape: return QStringLiteral("Esc");
    case Qt::Key_QuoteLeft: return QStringLiteral("`");
    default: return QKeySequence(qtKey).toString(QKeySequence::PortableText).toUpper();
    }
}
}

std::optional<Shortcut> fromKeyPress(int qtKey, Qt::KeyboardModifiers modifiers)
{
    quint64 flags = 0;
    if (modifiers & Qt::MetaModifier)
        flags |= KeyboardShortcut::kCommandFlag;
    if (modifiers & Qt::AltModifier)
        flags |= KeyboardShortcut::kOptionFlag;
    if (modifiers & Qt::ControlModifier)
        flags |= KeyboardShortcut::kControlFlag;
    if (modifiers & Qt::ShiftModifier)
        flags |= KeyboardShortcut::kShiftFlag;
    if (flags == 0)
        return std::nullopt;
    const QString name = tableName(qtKey);
    for (const auto &key : KeyboardShortcut::namedKeys())
        if (name == QLatin1String(key.name))
            return Shortcut{flags, key.code};
    return std::nullopt;
}

}
