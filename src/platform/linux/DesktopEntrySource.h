#pragma once

#include "catalogue/AppSource.h"

#include <optional>

// The applications of a freedesktop desktop: the desktop entries in the
// "applications" folder of every XDG data folder (and of the Flatpak and Snap
// export folders), read through GIO. The first entry found for a desktop-file
// id hides the others; hidden, NoDisplay, not-shown-here and uninstalled
// (TryExec) entries are left out, and so is every launcher.
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
    QList<AppItem> fetch() const override;
    QStringList watchedDirectories() const override { return applicationDirectories(); }
    std::optional<AppIconReference> iconReference(const QString &appPath) const override;

private:
    std::optional<QStringList> m_exportDirs;
};
