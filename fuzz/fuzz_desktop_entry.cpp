// Desktop entries as the catalogue reads them: DesktopEntry::parse, checked
// against what GLib's key-file reader makes of the same bytes, so a field
// taken from the wrong key or a verdict that flips between runs is caught.
#include "FuzzSupport.h"
#include "platform/linux/DesktopEntry.h"

#include <QString>
#include <QStringList>
#include <cstddef>
#include <cstdint>

#include <glib.h>

namespace {

const QList<QByteArray> kLanguages = {"de_DE.UTF-8", "de_DE", "de", "C"};

QString take(gchar *text)
{
    const QString out = QString::fromUtf8(text);
    g_free(text);
    return out;
}

}

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    FuzzSupport::silenceLogs();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const auto entry = DesktopEntry::parse(bytes, kLanguages);
    if (!entry)
        return 0;
    entry->shownIn({QStringLiteral("GNOME")});
    entry->shownIn({});

    // A pure function: the same bytes, the same entry.
    const auto again = DesktopEntry::parse(bytes, kLanguages);
    FUZZ_CHECK(again && again->name == entry->name && again->icon == entry->icon
               && again->programs == entry->programs && again->hidden == entry->hidden);

    // Accepted only what GLib reads as an application entry, with the
    // flags and the untranslated name GLib reads.
    constexpr const char *kGroup = "Desktop Entry";
    GKeyFile *file = g_key_file_new();
    const bool loaded = g_key_file_load_from_data(file, bytes.constData(), gsize(bytes.size()), G_KEY_FILE_NONE, nullptr);
    FUZZ_CHECK(loaded && g_key_file_has_group(file, kGroup));
    FUZZ_CHECK(take(g_key_file_get_string(file, kGroup, "Type", nullptr)) == QLatin1String("Application"));
    FUZZ_CHECK(entry->hidden == bool(g_key_file_get_boolean(file, kGroup, "Hidden", nullptr)));
    FUZZ_CHECK(entry->noDisplay == bool(g_key_file_get_boolean(file, kGroup, "NoDisplay", nullptr)));
    FUZZ_CHECK(entry->untranslatedName == take(g_key_file_get_string(file, kGroup, "Name", nullptr)));
    g_key_file_free(file);
    return 0;
}
