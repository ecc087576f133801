#include "ui/CellFactory.h"

#include "layout/LaunchpadViewModel.h"
#include "storage/AppNameRepository.h"
#include "storage/AppsCustomizationRepository.h"

CellFactory::CellFactory(LaunchpadViewModel &layout, AppNameRepositoryImpl &names)
    : m_layout(layout)
    , m_names(names)
{
}

QString CellFactory::appTitle(const AppItem &app) const
{
    return m_names.displayName(app.path, app.displayName);
}

QString CellFactory::iconOf(const AppItem &app) const
{
    // Each import is a new file, so a changed icon is a new source to the views.
    if (m_icons)
        if (const auto custom = m_icons->icon(app.path); custom && !custom->isAsset())
            return QStringLiteral("file:") + custom->imagePath;
    return app.path;
}

QString CellFactory::titleOf(const QString &key) const
{
    const GridEntryOrEmpty entry = m_layout.resolve(key);
    if (!entry)
        return {};
    if (const auto *app = std::get_if<AppItem>(&*entry))
        return appTitle(*app);
    if (const auto *folder = std::get_if<FolderItem>(&*entry))
        return folder->name;
    if (const auto *workflow = std::get_if<WorkflowItem>(&*entry))
        return workflow->name;
    return {};
}

GridCellBuilder CellFactory::builder() const
{
    return GridCellBuilder{&m_layout.lookup(), [this](const AppItem &app) { return appTitle(app); },
                           [this](const AppItem &app) { return iconOf(app); }};
}

QList<QList<GridCell>> CellFactory::pages(const QStringList &slots, const PageGeometry &geometry,
                                          int minimumPages) const
{
    const GridCellBuilder cells = builder();
    const int count = std::max(minimumPages, geometry.pageCount(int(slots.size())));
    QList<QList<GridCell>> out;
    out.reserve(count);
    for (int p = 0; p < count; ++p)
        out.append(cells.page(slots, geometry, p));
    return out;
}
