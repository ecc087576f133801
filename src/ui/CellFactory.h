#pragma once

#include "ui/GridCell.h"

#include <QString>

class AppNameRepositoryImpl;
class AppsCustomizationRepository;
class LaunchpadViewModel;

// Names and cells as every view shows them (custom names applied), shared by
// the pages, the open folder, search and the hidden-apps list.
class CellFactory {
public:
    CellFactory(LaunchpadViewModel &layout, AppNameRepositoryImpl &names);

    // Apps with a custom icon show it; without this, every app shows its own.
    void setCustomIcons(const AppsCustomizationRepository *icons) { m_icons = icons; }
    // "file:" + the custom icon's image, else the app's path.
    QString iconOf(const AppItem &app) const;
    QString appTitle(const AppItem &app) const;
    QString titleOf(const QString &key) const;
    GridCellBuilder builder() const;
    GridCell cellFor(const QString &key) const { return builder().cellFor(key); }
    // Pages of slots cut by geometry; at least minimumPages of them.
    QList<QList<GridCell>> pages(const QStringList &slots, const PageGeometry &geometry, int minimumPages = 1) const;

private:
    LaunchpadViewModel &m_layout;
    AppNameRepositoryImpl &m_names;
    const AppsCustomizationRepository *m_icons = nullptr;
};
