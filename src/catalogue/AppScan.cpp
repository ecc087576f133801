#include "catalogue/AppScan.h"

bool AppScan::add(const AppItem &app)
{
    if (m_paths.contains(app.path))
        return false;
    m_paths.insert(app.path);
    m_apps.append(app);
    return true;
}

void AppScan::addListedFolder(const QString &folder, const QSet<QString> &subfolders)
{
    m_listed[folder] += subfolders;
}

void AppScan::addUnreadable(const QString &path)
{
    m_unreadable.insert(path);
}

void AppScan::addIdentityRoot(const QString &folder)
{
    if (!m_identityRoots.contains(folder))
        m_identityRoots.append(folder);
}

void AppScan::merge(const AppScan &other)
{
    for (const AppItem &app : other.m_apps)
        add(app);
    for (auto it = other.m_listed.cbegin(); it != other.m_listed.cend(); ++it)
        addListedFolder(it.key(), it.value());
    m_unreadable += other.m_unreadable;
    for (const QString &root : other.m_identityRoots)
        addIdentityRoot(root);
}

bool AppScan::isKnownGone(const QString &path) const
{
    if (path.isEmpty() || m_paths.contains(path) || m_unreadable.contains(path))
        return false;
    // The deepest listed folder above the path decides. If it is the path's
    // own folder, the entry is not there or not an app. If it is further up,
    // the folder on the way down must be missing from its listing; a folder
    // that is there but was not listed (unreadable, too deep, a loop) hides
    // what it holds.
    qsizetype cut = path.lastIndexOf(u'/');
    if (cut < 0)
        return false;
    QString child = path.mid(cut + 1);
    bool ownFolder = true;
    for (;;) {
        const QString folder = cut == 0 ? QStringLiteral("/") : path.left(cut);
        const auto listed = m_listed.constFind(folder);
        if (listed != m_listed.cend())
            return ownFolder || !listed->contains(child);
        if (cut == 0)
            return false;
        ownFolder = false;
        cut = folder.lastIndexOf(u'/');
        child = folder.mid(cut + 1);
    }
}

QString AppScan::identityByPath(const QString &path) const
{
    for (const QString &root : m_identityRoots) {
        if (path.size() > root.size() + 1 && path.startsWith(root) && path.at(root.size()) == u'/')
            return path.mid(root.size() + 1).replace(u'/', u'-');
    }
    return {};
}
