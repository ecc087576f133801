#pragma once

#include <QString>
#include <optional>

// Shortcuts as they are printed on a PC keyboard: "Ctrl+Alt+L", "Super+4",
// "Shift+F5". parse reads what a user types (any case; super, meta and win
// are one key, as are ctrl and control); format writes the names in the
// order Ctrl+Alt+Shift+Super+Key. Both work on the stored form: the key code
// of the ANSI key table and the modifier flags of the settings.
namespace ShortcutNames {

struct Shortcut {
    quint32 keyCode = 0;
    quint64 modifierFlags = 0;
    bool operator==(const Shortcut &) const = default;
};

// Nothing when a part is not a key or a modifier we know, when there is no
// key, or when there is more than one.
std::optional<Shortcut> parse(const QString &text);
QString format(quint32 keyCode, quint64 modifierFlags);

// The key's printed name ("F5", "Page Up", "4", "/"), or nothing.
std::optional<QString> keyName(quint32 keyCode);
// Whether a key may be a global shortcut on its own: a grab of any other key
// without a modifier would take it from every application.
bool standsAlone(quint32 keyCode);
// Every name parse takes, for the message that refuses one.
QString acceptedNames();

}
