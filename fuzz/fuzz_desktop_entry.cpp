// Desktop entries, as the catalogue reads them today: GLib's key-file
// reader and GIO's rules for application entries. readEntry() is the one
// place that knows how; a parser of our own replaces its body.
#include "FuzzSupport.h"

#include <QString>
#include <QStringList>
#include <cstddef>
#include <cstdint>
#include <optional>

#include <gio/gdesktopappinfo.h>

namespace {

// The fields the catalogue, the icon lookup and the launcher take from an
// entry, and GIO's verdict on it.
struct Entry {
    QString type, name, localizedName, icon, exec, tryExec;
    bool hidden = false, noDisplay = false;
    QStringList actions;
    // GIO took it as an application that exists here; then its verdicts.
    bool application = false, shown = false, gioHidden = false;
    QString gioName;
};

QString take(gchar *text)
{
    const QString out = QString::fromUtf8(text);
    g_free(text);
    return out;
}

// Nothing when the bytes are not a key file with a "Desktop Entry" group.
std::optional<Entry> readEntry(const QByteArray &bytes)
{
    constexpr const char *kGroup = "Desktop Entry";
    GKeyFile *file = g_key_file_new();
    std::optional<Entry> out;
    if (g_key_file_load_from_data(file, bytes.constData(), gsize(bytes.size()), G_KEY_FILE_NONE, nullptr)
        && g_key_file_has_group(file, kGroup)) {
        Entry entry;
        entry.type = take(g_key_file_get_string(file, kGroup, "Type", nullptr));
        entry.name = take(g_key_file_get_string(file, kGroup, "Name", nullptr));
        entry.localizedName = take(g_key_file_get_locale_string(file, kGroup, "Name", nullptr, nullptr));
        entry.icon = take(g_key_file_get_locale_string(file, kGroup, "Icon", nullptr, nullptr));
        entry.exec = take(g_key_file_get_string(file, kGroup, "Exec", nullptr));
        entry.tryExec = take(g_key_file_get_string(file, kGroup, "TryExec", nullptr));
        entry.hidden = g_key_file_get_boolean(file, kGroup, "Hidden", nullptr);
        entry.noDisplay = g_key_file_get_boolean(file, kGroup, "NoDisplay", nullptr);
        gchar **actions = g_key_file_get_string_list(file, kGroup, "Actions", nullptr, nullptr);
        for (gchar **a = actions; a && *a; ++a)
            entry.actions.append(QString::fromUtf8(*a));
        g_strfreev(actions);

        // What DesktopEntrySource asks GIO for an entry file.
        if (GDesktopAppInfo *info = g_desktop_app_info_new_from_keyfile(file)) {
            entry.application = true;
            entry.gioHidden = g_desktop_app_info_get_is_hidden(info);
            entry.shown = g_app_info_should_show(G_APP_INFO(info));
            entry.gioName = QString::fromUtf8(g_app_info_get_name(G_APP_INFO(info)));
            for (const gchar *const *a = g_desktop_app_info_list_actions(info); a && *a; ++a)
                g_free(g_desktop_app_info_get_action_name(info, *a));
            g_object_unref(info);
        }
        out = entry;
    }
    g_key_file_free(file);
    return out;
}

}

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    FuzzSupport::silenceLogs();
    // Fixed, so GIO's verdicts (OnlyShowIn, TryExec) do not depend on the
    // machine's session.
    g_setenv("XDG_CURRENT_DESKTOP", "GNOME", TRUE);
    g_setenv("PATH", "/usr/bin:/bin", TRUE);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const std::optional<Entry> entry = readEntry(bytes);
    if (!entry || !entry->application)
        return 0;
    // The rules the catalogue relies on when it takes GIO's word for an
    // entry: only applications, hidden exactly when Hidden=true (asked
    // separately: GIO may "show" a hidden entry), never shown with
    // NoDisplay=true, named by the localized Name.
    FUZZ_CHECK(entry->type == QLatin1String("Application"));
    FUZZ_CHECK(entry->gioHidden == entry->hidden);
    FUZZ_CHECK(!entry->shown || !entry->noDisplay);
    FUZZ_CHECK(entry->localizedName.isEmpty() || entry->gioName == entry->localizedName);
    return 0;
}
