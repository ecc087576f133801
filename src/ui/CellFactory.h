#pragma once

#include "ui/GridCell.h"

#include <QString>

class AppNameRepositoryImpl;
class LaunchpadViewModel;

// Names and cells as every view shows them (custom names applied), shared by
// the pages, the open folder, search and the hidden-apps list.
class AppsCustomizationRepository;
class FolderIconStyleRepository;

class CellFactory {
public:
    CellFactory(LaunchpadViewModel &layout, AppNameRepositoryImpl &names);

    // Apps with an image of the user's own show it; without, every app shows its own icon.
    void setCustomIcons(const AppsCustomizationRepository *icons) { m_icons = icons; }
    void setFolderStyles(const FolderIconStyleRepository *styles) { m_folderStyles = styles; }
    QString folderTint(const QString &folderId) const;
    QString appTitle(const AppItem &app) const;
    // "file:<image>#<modified>" for an app with a custom icon (the time makes
    // a replaced image a new source), else the app's path.
    QString iconSourceOf(const QString &appPath) const;
    QString titleOf(const QString &key) const;
    GridCellBuilder builder() const;
    GridCell cellFor(const QString &key) const { return builder().cellFor(key); }
    // Pages of slots cut by geometry; at least minimumPages of them.
    QList<QList<GridCell>> pages(const QStringList &slots, const PageGeometry &geometry, int minimumPages = 1) const;

private:
    LaunchpadViewModel &m_layout;
    AppNameRepositoryImpl &m_names;
    const AppsCustomizationRepository *m_icons = nullptr;
    const FolderIconStyleRepository *m_folderStyles = nullptr;
};
