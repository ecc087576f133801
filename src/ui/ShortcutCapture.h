#pragma once

#include <QString>
#include <Qt>
#include <optional>

// Turns a pressed key combination into a stored shortcut: the modifier flags
// of the settings and the virtual key code of the key table. Super/Meta is the
// Command key. Shift with a digit is that digit's key. A key without a
// modifier is a shortcut only when it is a function key; a lone modifier or a
// key without a name is none.
namespace ShortcutCapture {
struct Shortcut {
    quint64 modifierFlags = 0;
    quint32 keyCode = 0;
    bool operator==(const Shortcut &) const = default;
};
std::optional<Shortcut> fromKeyPress(int qtKey, Qt::KeyboardModifiers modifiers);
}
