#pragma once

#include "catalogue/AppSource.h"
#include "catalogue/FileStamp.h"

#include <QHash>
#include <QMutex>
#include <optional>

// The applications of a freedesktop desktop: the desktop entries in the
// "applications" folder of every XDG data folder (and of the Flatpak and Snap
// export folders). The first entry found for a desktop-file id hides the
// others; hidden, NoDisplay, not-shown-here and uninstalled (TryExec, or the
// Exec program not found) entries are left out, and so is every launcher.
// Entries are read as GIO reads them, but without GIO's application index:
// building it follows links without end, and asking it for a file's id
// looks through every entry, which makes a scan quadratic.
class DesktopEntrySource final : public AppSource {
public:
    // With the system-wide export folders, unless TILLMORA_APP_DIRS replaces
    // the fixed application folders.
    DesktopEntrySource();
    // With the given system-wide export folders instead.
    explicit DesktopEntrySource(QStringList exportDirs);

    // The "applications" folders, most important first.
    QStringList applicationDirectories() const;

    // Ordered by display name, case-insensitive and by the rules of the locale.
    AppScan scan() const override;
    QStringList watchedDirectories() const override { return applicationDirectories(); }
    void setUserFolders(const QStringList &folders) override;
    std::optional<AppIconReference> iconReference(const QString &appPath) const override;

private:
    struct CachedEntry {
        FileStamp stamp;
        std::optional<AppItem> item; // nothing: not shown
    };

    std::optional<QStringList> m_exportDirs;
    mutable QMutex m_userFoldersMutex;
    QStringList m_userFolders;
    // What the last scan decided per desktop file. A file whose stamp is
    // unchanged is not parsed again, as long as nothing it may depend on
    // changed: the folders of PATH (a TryExec or Exec program installed or
    // removed), the language settings and the current desktop.
    mutable QMutex m_cacheMutex;
    mutable QByteArray m_cacheContext;
    mutable QHash<QString, CachedEntry> m_cache;
};
