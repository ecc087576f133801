#include "platform/linux/DesktopEntrySource.h"

#include "catalogue/AppsRepositoryImpl.h"
#include "catalogue/DirectoryListing.h"
#include "catalogue/ExclusionRules.h"
#include "catalogue/XdgDirectories.h"

#include <QCollator>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <algorithm>
#include <vector>

#include <gio/gdesktopappinfo.h>

namespace {

const QString kDesktopSuffix = QStringLiteral(".desktop");
// Sub-folders give ids such as "kde4-konsole.desktop"; a symlink loop must not
// recurse for ever.
constexpr int kMaxDepth = 8;

struct Candidate {
    QString id;
    QString path;
};

// Entries by desktop-file id; the first folder that has an id wins, even when
// that entry turns out hidden or unreadable: it masks the ones below it.
void collect(const QString &dir, const QString &prefix, int depth, QSet<QString> &ids, QList<Candidate> &out)
{
    const auto entries = DirectoryListing::list(dir);
    if (!entries)
        return;
    for (const auto &entry : *entries) {
        const QString path = dir + u'/' + entry.name;
        const bool isDir = entry.type == DirectoryListing::Entry::Type::Directory
            || (entry.type == DirectoryListing::Entry::Type::Symlink && QFileInfo(path).isDir());
        if (isDir) {
            if (depth < kMaxDepth)
                collect(path, prefix + entry.name + u'-', depth + 1, ids, out);
        } else if (entry.name.endsWith(kDesktopSuffix)) {
            const QString id = prefix + entry.name;
            if (!ids.contains(id)) {
                ids.insert(id);
                out.append({id, path});
            }
        }
    }
}

struct InfoDeleter {
    void operator()(GDesktopAppInfo *info) const { g_object_unref(info); }
};
using InfoPtr = std::unique_ptr<GDesktopAppInfo, InfoDeleter>;

InfoPtr load(const QString &path)
{
    // NULL for files that are unreadable, not an application, or whose
    // TryExec or Exec program is not installed.
    return InfoPtr(g_desktop_app_info_new_from_filename(QFile::encodeName(path).constData()));
}

QString takeString(char *text)
{
    const QString out = QString::fromUtf8(text);
    g_free(text);
    return out;
}

// Everything besides the file itself that GIO's verdict on an entry depends on.
QByteArray cacheContext()
{
    QByteArray context;
    for (const char *variable : {"PATH", "LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"})
        context += qgetenv(variable) + '\n';
    for (const QByteArray &dir : qgetenv("PATH").split(':')) {
        if (const auto stamp = FileStamp::of(QFile::decodeName(dir)))
            context += QByteArray::number(stamp->inode) + ' ' + QByteArray::number(stamp->modifiedNs) + ' '
                + QByteArray::number(stamp->changedNs) + '\n';
    }
    return context;
}

}

DesktopEntrySource::DesktopEntrySource() = default;

DesktopEntrySource::DesktopEntrySource(QStringList exportDirs)
    : m_exportDirs(std::move(exportDirs))
{
}

QStringList DesktopEntrySource::applicationDirectories() const
{
    // TILLMORA_APP_DIRS replaces every fixed folder; the XDG variables are the
    // session's own and keep their meaning.
    const QStringList exports = m_exportDirs.value_or(
        AppsRepositoryImpl::searchDirectoriesOverridden() ? QStringList() : XdgDirectories::systemExportDirs());
    QStringList out;
    for (const QString &dir : XdgDirectories::dataDirsWithExports(exports))
        out.append(dir + QStringLiteral("/applications"));
    return out;
}

QList<AppItem> DesktopEntrySource::fetch() const
{
    QSet<QString> ids;
    QList<Candidate> candidates;
    for (const QString &dir : applicationDirectories())
        collect(dir, QString(), 0, ids, candidates);

    QList<AppItem> items;
    {
        QMutexLocker lock(&m_cacheMutex);
        const QByteArray context = cacheContext();
        if (context != m_cacheContext) {
            m_cache.clear();
            m_cacheContext = context;
        }
        QHash<QString, CachedEntry> cache;
        for (const Candidate &candidate : candidates) {
            const auto stamp = FileStamp::of(candidate.path);
            if (!stamp)
                continue; // a broken link, or gone since the listing
            const auto cached = m_cache.constFind(candidate.path);
            const CachedEntry entry = cached != m_cache.cend() && cached->stamp == *stamp
                ? *cached
                : CachedEntry{*stamp, evaluate(candidate.id, candidate.path)};
            cache.insert(candidate.path, entry);
            if (entry.item)
                items.append(*entry.item);
        }
        m_cache.swap(cache);
    }

    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::vector<std::pair<QCollatorSortKey, qsizetype>> keys;
    keys.reserve(items.size());
    for (qsizetype i = 0; i < items.size(); ++i)
        keys.emplace_back(collator.sortKey(items[i].displayName), i);
    std::stable_sort(keys.begin(), keys.end(), [&](const auto &a, const auto &b) {
        const int order = a.first.compare(b.first);
        return order != 0 ? order < 0 : items[a.second].path < items[b.second].path;
    });
    QList<AppItem> sorted;
    sorted.reserve(items.size());
    for (const auto &key : keys)
        sorted.append(items[key.second]);
    return sorted;
}

std::optional<AppItem> DesktopEntrySource::evaluate(const QString &id, const QString &path) const
{
    const InfoPtr info = load(path);
    if (!info || g_desktop_app_info_get_is_hidden(info.get()) || !g_app_info_should_show(G_APP_INFO(info.get())))
        return std::nullopt;
    const QString name = QString::fromUtf8(g_app_info_get_name(G_APP_INFO(info.get())));
    const QString untranslatedName = takeString(g_desktop_app_info_get_string(info.get(), "Name"));
    if (ExclusionRules::mentionsLauncher(id) || ExclusionRules::mentionsLauncher(name)
        || ExclusionRules::mentionsLauncher(untranslatedName))
        return std::nullopt;
    return AppItems::make(path, name);
}

std::optional<AppIconReference> DesktopEntrySource::iconReference(const QString &appPath) const
{
    if (!appPath.endsWith(kDesktopSuffix))
        return std::nullopt;
    const InfoPtr info = load(appPath);
    if (!info)
        return std::nullopt;
    const QString icon = takeString(g_desktop_app_info_get_locale_string(info.get(), "Icon"));
    if (icon.isEmpty())
        return std::nullopt;
    return AppIconReference{QString(), icon};
}
