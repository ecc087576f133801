#include "input/ShortcutNames.h"

#include "input/KeyboardShortcut.h"

#include <QList>
#include <QStringList>
#include <cstring>
#include <iterator>

namespace ShortcutNames {

namespace {

struct Key {
    quint32 code;
    const char *name;    // as printed on the key
    const char *aliases; // further spellings, lower case, space-separated
};

// The keys whose PC name is not a letter or digit of the ANSI key table
// (those come from it, below). Codes of that table; F21 to F24 have no code
// there and take the first free codes above it.
constexpr Key kOwnKeys[] = {
    {122, "F1", ""},       {120, "F2", ""},      {99, "F3", ""},        {118, "F4", ""},
    {96, "F5", ""},        {97, "F6", ""},       {98, "F7", ""},        {100, "F8", ""},
    {101, "F9", ""},       {109, "F10", ""},     {103, "F11", ""},      {111, "F12", ""},
    {105, "F13", ""},      {107, "F14", ""},     {113, "F15", ""},      {106, "F16", ""},
    {64, "F17", ""},       {79, "F18", ""},      {80, "F19", ""},       {90, "F20", ""},
    {128, "F21", ""},      {129, "F22", ""},     {130, "F23", ""},      {131, "F24", ""},
    {49, "Space", ""},     {48, "Tab", ""},      {36, "Enter", "return"},
    {53, "Esc", "escape"}, {51, "Backspace", ""}, {117, "Delete", "del"},
    {114, "Insert", "ins"}, {115, "Home", ""},   {119, "End", ""},
    {116, "Page Up", "pgup prior"},              {121, "Page Down", "pgdn next"},
    {123, "Left", ""},     {124, "Right", ""},   {126, "Up", ""},       {125, "Down", ""},
    {27, "-", "minus"},    {24, "=", "equal equals"},
    {33, "[", "bracketleft leftbracket"},        {30, "]", "bracketright rightbracket"},
    {41, ";", "semicolon"}, {39, "'", "apostrophe quote"},
    {43, ",", "comma"},    {47, ".", "period dot"},
    {44, "/", "slash"},    {42, "\\", "backslash"},
    {50, "`", "grave backtick backquote"},
};

// Every key a shortcut can name: the letters and digits of the capture's
// key table under their own names, then the keys above.
const QList<Key> &keys()
{
    static const QList<Key> all = [] {
        QList<Key> out;
        for (const auto &key : KeyboardShortcut::namedKeys())
            if (std::strlen(key.name) == 1 && QChar::fromLatin1(key.name[0]).isLetterOrNumber())
                out.append({key.code, key.name, ""});
        out.append(QList<Key>(std::begin(kOwnKeys), std::end(kOwnKeys)));
        return out;
    }();
    return all;
}

struct Modifier {
    quint64 flag;
    const char *name;
    const char *aliases;
};

// In the order format writes them.
constexpr Modifier kModifiers[] = {
    {KeyboardShortcut::kControlFlag, "Ctrl", "ctrl control"},
    {KeyboardShortcut::kOptionFlag, "Alt", "alt option"},
    {KeyboardShortcut::kShiftFlag, "Shift", "shift"},
    {KeyboardShortcut::kCommandFlag, "Super", "super meta win windows cmd command"},
};

// "Page Up", "page_up" and "pageup" are one name; a lone "-" stays itself.
QString folded(const QString &word)
{
    QString out = word.trimmed().toLower();
    if (out.size() > 1)
        out.remove(u' ').remove(u'_').remove(u'-');
    return out;
}

bool spells(const char *name, const char *aliases, const QString &word)
{
    if (folded(QLatin1String(name)) == word)
        return true;
    return QString::fromLatin1(aliases).split(u' ', Qt::SkipEmptyParts).contains(word);
}

}

std::optional<Shortcut> parse(const QString &text)
{
    std::optional<quint32> key;
    quint64 flags = 0;
    for (const QString &part : text.split(u'+')) {
        const QString word = folded(part);
        if (word.isEmpty())
            return std::nullopt;
        bool known = false;
        for (const Modifier &modifier : kModifiers)
            if (spells(modifier.name, modifier.aliases, word)) {
                flags |= modifier.flag;
                known = true;
            }
        for (const Key &k : keys())
            if (!known && spells(k.name, k.aliases, word)) {
                if (key)
                    return std::nullopt; // two keys cannot be pressed as one shortcut
                key = k.code;
                known = true;
            }
        if (!known)
            return std::nullopt;
    }
    if (!key)
        return std::nullopt;
    return Shortcut{*key, flags};
}

std::optional<QString> keyName(quint32 keyCode)
{
    for (const Key &k : keys())
        if (k.code == keyCode)
            return QString::fromLatin1(k.name);
    return std::nullopt;
}

QString format(quint32 keyCode, quint64 modifierFlags)
{
    QStringList parts;
    for (const Modifier &modifier : kModifiers)
        if (modifierFlags & modifier.flag)
            parts.append(QLatin1String(modifier.name));
    parts.append(keyName(keyCode).value_or(QStringLiteral("Key %1").arg(keyCode)));
    return parts.join(u'+');
}

bool standsAlone(quint32 keyCode)
{
    const auto name = keyName(keyCode);
    return name && name->size() > 1 && name->startsWith(u'F') && name->at(1).isDigit();
}

QString acceptedNames()
{
    return QStringLiteral("modifiers Ctrl (Control), Alt, Shift, Super (Meta, Win); keys A-Z, 0-9, F1-F24, Space, "
                          "Tab, Enter (Return), Esc (Escape), Backspace, Delete, Insert, Home, End, Page Up, "
                          "Page Down, Left, Right, Up, Down, and - = [ ] ; ' , . / \\ ` (or minus, equal, "
                          "bracketleft, bracketright, semicolon, apostrophe, comma, period, slash, backslash, "
                          "grave)");
}

}
