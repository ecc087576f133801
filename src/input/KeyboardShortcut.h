#pragma once

#include <QString>
#include <optional>
#include <span>

// Shortcuts are stored as a virtual key code of the ANSI layout and the
// modifier flags of the settings ("hotKey.modifiers"); registrations use the
// Carbon modifier mask.
namespace KeyboardShortcut {

// Modifier flags as stored.
inline constexpr quint64 kShiftFlag = 0x20000;
inline constexpr quint64 kControlFlag = 0x40000;
inline constexpr quint64 kOptionFlag = 0x80000;
inline constexpr quint64 kCommandFlag = 0x100000;

// Carbon modifier mask bits.
inline constexpr quint32 kCmdKey = 0x100;
inline constexpr quint32 kShiftKey = 0x200;
inline constexpr quint32 kOptionKey = 0x800;
inline constexpr quint32 kControlKey = 0x1000;

// Command, Shift, Option and Control carry over; every other flag is dropped.
quint32 carbonModifiers(quint64 modifierFlags);

struct VirtualKey {
    quint32 code;
    const char *name;
};
// The 52 named keys, in code order.
std::span<const VirtualKey> namedKeys();
std::optional<QString> keyName(quint32 keyCode);

// "⌘⌥⇧⌃" in that order for the held modifiers, then the key's name or
// "KeyCode(n)"; the default shortcut reads "⌘4".
QString displayText(quint64 modifierFlags, quint32 keyCode);

}
