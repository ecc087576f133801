#include "ui/CellFactory.h"

#include "layout/LaunchpadViewModel.h"
#include "storage/AppNameRepository.h"
#include "storage/AppsCustomizationRepository.h"
#include "storage/FolderIconStyleRepository.h"

#include <QColor>

#include <QFileInfo>

CellFactory::CellFactory(LaunchpadViewModel &layout, AppNameRepositoryImpl &names)
    : m_layout(layout)
    , m_names(names)
{
}

QString CellFactory::appTitle(const AppItem &app) const
{
    return m_names.displayName(app.path, app.displayName);
}

QString CellFactory::iconSourceOf(const QString &appPath) const
{
    const auto custom = m_icons ? m_icons->icon(appPath) : std::nullopt;
    if (!custom || custom->imagePath.isEmpty() || custom->imagePath.startsWith(QLatin1String("asset:")))
        return appPath;
    const QFileInfo file(custom->imagePath);
    if (!file.isFile())
        return appPath; // the image is gone: the app's own icon rather than a blank
    return QStringLiteral("file:") + file.absoluteFilePath() + u'#'
        + QString::number(file.lastModified().toMSecsSinceEpoch());
}

QString CellFactory::folderTint(const QString &folderId) const
{
    const auto style = m_folderStyles ? m_folderStyles->style(folderId) : std::nullopt;
    return style && QColor::isValidColorName(style->tint) ? style->tint : QString();
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
                           [this](const QString &path) { return iconSourceOf(path); },
                           [this](const QString &folderId) { return folderTint(folderId); }};
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
