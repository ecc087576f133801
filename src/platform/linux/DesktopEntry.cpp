#include "platform/linux/DesktopEntry.h"

#include <glib.h>
#include <memory>

namespace {

constexpr const char *kGroup = "Desktop Entry";

struct KeyFileDeleter {
    void operator()(GKeyFile *keys) const { g_key_file_free(keys); }
};

QString takeString(char *text)
{
    const QString out = QString::fromUtf8(text);
    g_free(text);
    return out;
}

QByteArray takeBytes(char *text)
{
    const QByteArray out(text);
    g_free(text);
    return out;
}

QStringList stringList(GKeyFile *keys, const char *key)
{
    QStringList out;
    gsize length = 0;
    char **list = g_key_file_get_string_list(keys, kGroup, key, &length, nullptr);
    for (gsize i = 0; i < length; ++i)
        out.append(QString::fromUtf8(list[i]));
    g_strfreev(list);
    return out;
}

// As g_key_file_get_locale_string does with the process's languages, but
// with the languages given: the first "key[language]" present wins.
QString localeString(GKeyFile *keys, const char *key, const QList<QByteArray> &languages)
{
    for (const QByteArray &language : languages) {
        const QByteArray localized = QByteArray(key) + '[' + language + ']';
        if (char *value = g_key_file_get_string(keys, kGroup, localized.constData(), nullptr))
            return takeString(value);
    }
    return takeString(g_key_file_get_string(keys, kGroup, key, nullptr));
}

}

std::optional<DesktopEntry> DesktopEntry::parse(const QByteArray &bytes, const QList<QByteArray> &languages)
{
    const std::unique_ptr<GKeyFile, KeyFileDeleter> owner(g_key_file_new());
    GKeyFile *keys = owner.get();
    if (!g_key_file_load_from_data(keys, bytes.constData(), gsize(bytes.size()), G_KEY_FILE_KEEP_TRANSLATIONS, nullptr))
        return std::nullopt;
    char *start = g_key_file_get_start_group(keys);
    const bool desktopGroup = start && qstrcmp(start, kGroup) == 0;
    g_free(start);
    if (!desktopGroup || takeBytes(g_key_file_get_string(keys, kGroup, "Type", nullptr)) != "Application")
        return std::nullopt;

    DesktopEntry entry;
    const QByteArray tryExec = takeBytes(g_key_file_get_string(keys, kGroup, "TryExec", nullptr));
    if (!tryExec.isEmpty())
        entry.programs.append(tryExec);
    const QByteArray exec = takeBytes(g_key_file_get_string(keys, kGroup, "Exec", nullptr));
    if (!exec.isEmpty()) {
        int argc = 0;
        char **argv = nullptr;
        if (!g_shell_parse_argv(exec.constData(), &argc, &argv, nullptr))
            return std::nullopt;
        entry.programs.append(QByteArray(argv[0]));
        g_strfreev(argv);
    }
    entry.name = localeString(keys, "Name", languages);
    entry.untranslatedName = takeString(g_key_file_get_string(keys, kGroup, "Name", nullptr));
    entry.icon = localeString(keys, "Icon", languages);
    entry.hidden = g_key_file_get_boolean(keys, kGroup, "Hidden", nullptr);
    entry.noDisplay = g_key_file_get_boolean(keys, kGroup, "NoDisplay", nullptr);
    entry.onlyShowIn = stringList(keys, "OnlyShowIn");
    entry.notShowIn = stringList(keys, "NotShowIn");
    return entry;
}

bool DesktopEntry::shownIn(const QStringList &desktops) const
{
    // Desktop by desktop, OnlyShowIn before NotShowIn; with neither naming
    // one, only an entry without OnlyShowIn shows.
    for (const QString &desktop : desktops) {
        if (onlyShowIn.contains(desktop))
            return true;
        if (notShowIn.contains(desktop))
            return false;
    }
    return onlyShowIn.isEmpty();
}
