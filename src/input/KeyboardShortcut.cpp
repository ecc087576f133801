#include "input/KeyboardShortcut.h"

#include <QStringList>
#include <array>

namespace KeyboardShortcut {

namespace {
constexpr std::array<VirtualKey, 52> kNamedKeys{{
    {0, "A"},       {1, "S"},      {2, "D"},      {3, "F"},    {4, "H"},       {5, "G"},     {6, "Z"},
    {7, "X"},       {8, "C"},      {9, "V"},      {11, "B"},   {12, "Q"},      {13, "W"},    {14, "E"},
    {15, "R"},      {16, "Y"},     {17, "T"},     {18, "1"},   {19, "2"},      {20, "3"},    {21, "4"},
    {22, "6"},      {23, "5"},     {24, "="},     {25, "9"},   {26, "7"},      {27, "-"},    {28, "8"},
    {29, "0"},      {30, "]"},     {31, "O"},     {32, "U"},   {33, "["},      {34, "I"},    {35, "P"},
    {36, "Return"}, {37, "L"},     {38, "J"},     {39, "'"},   {40, "K"},      {41, ";"},    {42, "\\"},
    {43, ","},      {44, "/"},     {45, "N"},     {46, "M"},   {47, "."},      {48, "Tab"},  {49, "Space"},
    {50, "`"},      {51, "Delete"}, {53, "Esc"},
}};
}

quint32 carbonModifiers(quint64 flags)
{
    quint32 mask = 0;
    if (flags & kCommandFlag)
        mask |= kCmdKey;
    if (flags & kShiftFlag)
        mask |= kShiftKey;
    if (flags & kOptionFlag)
        mask |= kOptionKey;
    if (flags & kControlFlag)
        mask |= kControlKey;
    return mask;
}

std::span<const VirtualKey> namedKeys()
{
    return kNamedKeys;
}

std::optional<QString> keyName(quint32 keyCode)
{
    for (const VirtualKey &key : kNamedKeys)
        if (key.code == keyCode)
            return QString::fromLatin1(key.name);
    return std::nullopt;
}

QString displayText(quint64 flags, quint32 keyCode)
{
    QString text;
    if (flags & kCommandFlag)
        text += QStringLiteral("⌘");
    if (flags & kOptionFlag)
        text += QStringLiteral("⌥");
    if (flags & kShiftFlag)
        text += QStringLiteral("⇧");
    if (flags & kControlFlag)
        text += QStringLiteral("⌃");
    return text + keyName(keyCode).value_or(QStringLiteral("KeyCode(%1)").arg(keyCode));
}

}

