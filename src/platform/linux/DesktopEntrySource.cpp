#include "platform/linux/DesktopEntrySource.h"

#include "catalogue/AppsRepositoryImpl.h"
#include "catalogue/ExclusionRules.h"
#include "catalogue/FolderWalk.h"
#include "catalogue/SmallFile.h"
#include "catalogue/XdgDirectories.h"
#include "platform/linux/DesktopEntry.h"

#include <QCollator>
#include <QFile>
#include <QSet>
#include <algorithm>
#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include <glib.h>

namespace {

const QString kDesktopSuffix = QStringLiteral(".desktop");
// Sub-folders give ids such as "kde4-konsole.desktop"; deeper than this is
// no menu layout anyone uses.
constexpr int kMaxDepth = 8;

struct Candidate {
    QString id;
    QString path;
};

// What a scan needs of the session, read once per scan.
struct Session {
    QList<QByteArray> languages; // as GLib orders them for the locale
    QStringList desktops;        // XDG_CURRENT_DESKTOP

    static Session current()
    {
        Session session;
        for (const char *const *language = g_get_language_names(); *language; ++language)
            session.languages.append(QByteArray(*language));
        session.desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
        return session;
    }
};

// Whether the programs entries name (TryExec, Exec) are installed, as GLib's
// g_find_program_in_path answers, each looked up once per scan: thousands of
// entries name a few hundred programs, and each lookup walks PATH.
class ProgramLookup {
public:
    ProgramLookup()
        : m_path(qEnvironmentVariableIsSet("PATH") ? qgetenv("PATH").split(':')
                                                    : QList<QByteArray>{"/bin", "/usr/bin", "."})
    {
    }

    bool installed(const QByteArray &program)
    {
        const auto known = m_known.constFind(program);
        if (known != m_known.cend())
            return *known;
        const bool found = find(program);
        m_known.insert(program, found);
        return found;
    }

private:
    static bool isExecutableFile(const QByteArray &path)
    {
        struct stat st;
        if (::stat(path.constData(), &st) != 0 || S_ISDIR(st.st_mode) || ::access(path.constData(), X_OK) != 0)
            return false;
        // access() lets root execute anything; like GLib, ask for an execute bit.
        return ::getuid() != 0 || (st.st_mode & (S_IXUSR | S_IXGRP | S_IXOTH));
    }

    bool find(const QByteArray &program) const
    {
        if (program.contains('/'))
            return isExecutableFile(program);
        for (const QByteArray &dir : m_path) // an empty element is the current folder
            if (isExecutableFile((dir.isEmpty() ? QByteArray(".") : dir) + '/' + program))
                return true;
        return false;
    }

    QList<QByteArray> m_path;
    QHash<QByteArray, bool> m_known;
};

// Entries by desktop-file id; the first folder that has an id wins, even when
// that entry turns out hidden or unreadable: it masks the ones below it.
void collect(const QString &dir, QSet<QString> &ids, QList<Candidate> &out, AppScan &scan)
{
    FolderWalk::Options options;
    options.maxDepth = kMaxDepth;
    options.followLinks = true;
    options.listed = [&](const QString &folder, const QSet<QString> &subfolders) {
        scan.addListedFolder(folder, subfolders);
    };
    FolderWalk::walk(dir, options, [&](const FolderWalk::Entry &entry) {
        if (entry.isFolder)
            return true;
        if (entry.name.endsWith(kDesktopSuffix)) {
            QString id = entry.relative;
            id.replace(u'/', u'-');
            if (!ids.contains(id)) {
                ids.insert(id);
                out.append({id, entry.path});
            }
        }
        return false;
    });
}

// Everything besides the file itself that the verdict on an entry depends on.
QByteArray cacheContext()
{
    QByteArray context;
    for (const char *variable : {"PATH", "LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG", "XDG_CURRENT_DESKTOP"})
        context += qgetenv(variable) + '\n';
    for (const QByteArray &dir : qgetenv("PATH").split(':')) {
        if (const auto stamp = FileStamp::of(QFile::decodeName(dir)))
            context += QByteArray::number(stamp->inode) + ' ' + QByteArray::number(stamp->modifiedNs) + ' '
                + QByteArray::number(stamp->changedNs) + '\n';
    }
    return context;
}

// unreadable, if given, is set when the file is there but this run may not
// read it.
std::optional<DesktopEntry> readEntry(const QString &path, const QList<QByteArray> &languages,
                                      bool *unreadable = nullptr)
{
    const auto file = SmallFile::read(path);
    if (unreadable)
        *unreadable = file.status == SmallFile::Status::Unreadable;
    if (file.status != SmallFile::Status::Read)
        return std::nullopt;
    return DesktopEntry::parse(file.bytes, languages);
}

// Whether the entry shows, and as what.
std::optional<AppItem> evaluate(const Candidate &candidate, const Session &session, ProgramLookup &programs,
                                bool &unreadable)
{
    const auto entry = readEntry(candidate.path, session.languages, &unreadable);
    if (!entry || entry->hidden || entry->noDisplay || !entry->shownIn(session.desktops))
        return std::nullopt;
    for (const QByteArray &program : entry->programs)
        if (!programs.installed(program))
            return std::nullopt;
    const QString name = entry->name.isEmpty() ? candidate.id.chopped(kDesktopSuffix.size()) : entry->name;
    if (ExclusionRules::mentionsLauncher(candidate.id) || ExclusionRules::mentionsLauncher(name)
        || ExclusionRules::mentionsLauncher(entry->untranslatedName))
        return std::nullopt;
    return AppItems::make(candidate.path, name, candidate.id);
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
    // The user's own folders come last: an entry of the desktop's with the
    // same id wins.
    QMutexLocker lock(&m_userFoldersMutex);
    for (const QString &dir : m_userFolders)
        if (!out.contains(dir))
            out.append(dir);
    return out;
}

void DesktopEntrySource::setUserFolders(const QStringList &folders)
{
    QMutexLocker lock(&m_userFoldersMutex);
    m_userFolders = folders;
}

AppScan DesktopEntrySource::scan() const
{
    AppScan scan;
    QSet<QString> ids;
    QList<Candidate> candidates;
    for (const QString &dir : applicationDirectories()) {
        scan.addIdentityRoot(dir); // an entry's id follows from its path
        collect(dir, ids, candidates, scan);
    }

    QList<AppItem> items;
    {
        QMutexLocker lock(&m_cacheMutex);
        const QByteArray context = cacheContext();
        if (context != m_cacheContext) {
            m_cache.clear();
            m_cacheContext = context;
        }
        const Session session = Session::current();
        ProgramLookup programs;
        QHash<QString, CachedEntry> cache;
        for (const Candidate &candidate : candidates) {
            int error = 0;
            const auto stamp = FileStamp::of(candidate.path, &error);
            if (!stamp) {
                // A broken link or gone since the listing is no app; one this
                // run may not look at may still be.
                if (error != ENOENT && error != ENOTDIR && error != ELOOP)
                    scan.addUnreadable(candidate.path);
                continue;
            }
            const auto cached = m_cache.constFind(candidate.path);
            std::optional<AppItem> item;
            if (cached != m_cache.cend() && cached->stamp == *stamp) {
                item = cached->item;
            } else {
                bool unreadable = false;
                item = evaluate(candidate, session, programs, unreadable);
                if (unreadable) {
                    scan.addUnreadable(candidate.path);
                    continue; // not remembered: the next scan tries again
                }
            }
            cache.insert(candidate.path, CachedEntry{*stamp, item});
            if (item)
                items.append(*item);
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
    for (const auto &key : keys)
        scan.add(items[key.second]);
    return scan;
}

std::optional<AppIconReference> DesktopEntrySource::iconReference(const QString &appPath) const
{
    if (!appPath.endsWith(kDesktopSuffix))
        return std::nullopt;
    const auto entry = readEntry(appPath, Session::current().languages);
    if (!entry || entry->icon.isEmpty())
        return std::nullopt;
    return AppIconReference{QString(), entry->icon};
}
