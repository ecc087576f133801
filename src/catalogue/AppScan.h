#pragma once

#include "foundation/GridRecords.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

// What one scan of the application folders found, and how much of the disk it
// could see. An application that is not among apps() counts as gone only when
// the scan can vouch for it: the folder it lived in was listed in full and it
// is not there, or no longer an application. A folder that was missing or
// unreadable this time (an unmounted disk, a narrower XDG_DATA_DIRS in a cron
// job) or one this process does not scan at all proves nothing, so whatever the
// user arranged there stays as it was.
class AppScan {
public:
    const QList<AppItem> &apps() const { return m_apps; }
    bool contains(const QString &path) const { return m_paths.contains(path); }
    // Appends an application; false (and nothing added) when its path is
    // already listed: the first one found wins.
    bool add(const AppItem &app);

    // A folder whose entries were all listed. subfolders names the entries
    // that are folders or links: what stands below them was only seen if they
    // were listed too.
    void addListedFolder(const QString &folder, const QSet<QString> &subfolders);
    // An entry that is there but could not be read: it may still be an app.
    void addUnreadable(const QString &path);
    // A folder below which an application's identity is its path relative to
    // the folder with '/' read as '-' (how desktop-file ids are formed), so
    // the identity of an entry that is gone is still known.
    void addIdentityRoot(const QString &folder);
    // Appends the other scan's applications whose paths are new here, and
    // takes over what it could see.
    void merge(const AppScan &other);

    // True only when this scan proves path is no longer an application.
    bool isKnownGone(const QString &path) const;
    // The identity an application at path has by its place alone, or empty.
    QString identityByPath(const QString &path) const;

private:
    QList<AppItem> m_apps;
    QSet<QString> m_paths;
    QHash<QString, QSet<QString>> m_listed;
    QSet<QString> m_unreadable;
    QStringList m_identityRoots;
};
