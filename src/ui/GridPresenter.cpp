#include "ui/GridPresenter.h"

#include "foundation/SlotKey.h"
#include "foundation/Uuids.h"
#include "layout/LaunchpadViewModel.h"
#include "spaces/SpacesViewModel.h"
#include "platform/FileChooser.h"
#include "ui/FallbackFileChooser.h"
#include "storage/AppNameRepository.h"
#include "storage/AppsCustomizationRepository.h"
#include "storage/FolderIconStyleRepository.h"

#include <QColor>

#include <QPointer>
#include <QSet>
#include <algorithm>

#include <QScreen>

namespace {
// Long enough to read two lines.
constexpr int kNoticeMs = 8000;
}

GridPresenter::GridPresenter(LaunchpadViewModel &layout, AppNameRepositoryImpl &names,
                             AppearanceRepositoryImpl &appearance, std::shared_ptr<AppLauncher> launcher,
                             QObject *parent)
    : QObject(parent)
    , m_layout(layout)
    , m_names(names)
    , m_cells(layout, names)
    , m_activation(layout, std::move(launcher))
    , m_pages(layout, m_cells, appearance)
    , m_search(layout, m_cells, m_activation)
    , m_hidden(layout, m_cells)
    , m_folder(layout, m_cells)
    , m_drag(layout, m_pages, m_folder, m_activation)
    , m_workflows(layout, m_cells)
    , m_systemFolders(layout, m_folder)
{
    m_folder.setCategoriesSource([this](const QString &path) { return m_activation.categoriesOf(path); });
    connect(&m_workflows, &WorkflowsPresenter::notice, this, &GridPresenter::showNotice);
    connect(&m_systemFolders, &SystemFoldersPresenter::notice, this, &GridPresenter::showNotice);
    connect(&m_spaces, &SpacesPresenter::notice, this, &GridPresenter::showNotice);
    connect(&m_themes, &ThemesPresenter::notice, this, &GridPresenter::showNotice);
    // The missing-wallpaper notice goes as soon as the wallpaper is back.
    connect(&m_backdrop, &BackdropPresenter::noticeChanged, this, [this, shown = QString()](const QString &text) mutable {
        if (!text.isEmpty() || m_notice == shown)
            showNotice(text);
        shown = text;
    });
    connect(&m_systemFolders, &SystemFoldersPresenter::opened, this, &GridPresenter::hide);
    m_noticeTimer.setSingleShot(true);
    m_noticeTimer.setInterval(kNoticeMs);
    connect(&m_noticeTimer, &QTimer::timeout, this, [this] { showNotice(QString()); });
    const auto contentChanged = [this] {
        m_pages.contentChanged();
        m_search.rebuild();
        m_hidden.rebuild();
    };
    connect(&m_layout, &LaunchpadViewModel::appsChanged, this, contentChanged);
    connect(&m_layout, &LaunchpadViewModel::foldersChanged, this, [this] { m_pages.contentChanged(); });
    connect(&m_layout, &LaunchpadViewModel::widgetsChanged, this, [this] { m_pages.contentChanged(); });
    connect(&m_layout, &LaunchpadViewModel::workflowsChanged, this, [this] { m_pages.contentChanged(); });
    connect(&m_activation, &ActivationPresenter::folderRequested, &m_folder, &FolderPresenter::open);
    connect(&m_activation, &ActivationPresenter::opened, this, &GridPresenter::hide);
    // A launch that fails keeps the overlay up and says why, instead of silence.
    connect(&m_activation, &ActivationPresenter::launched, this,
            [this](const QString &path, bool ok, const QString &error) {
                if (!ok)
                    showNotice(tr("%1 could not be opened: %2").arg(m_cells.titleOf(SlotKey::app(path)), error));
            });
    // Whatever opened the folder, a half-made gesture on the grid ends.
    connect(&m_folder, &FolderPresenter::openChanged, this, [this] {
        if (m_folder.isOpen() && !m_drag.fromFolder())
            m_drag.cancel();
    });
    // A package opened from outside puts a sheet over a gesture that may be
    // under way: the gesture ends where it began, never dropped behind it.
    connect(&m_themes, &ThemesPresenter::importChanged, this, [this] {
        if (!m_themes.stage().isEmpty())
            m_drag.cancel();
    });
}

GridPresenter::~GridPresenter() = default;

void GridPresenter::setSpaces(SpacesViewModel *spaces)
{
    m_spaces.setModel(spaces);
    connect(spaces, &SpacesViewModel::spaceDidSwitch, this, [this] {
        m_drag.cancel();
        m_folder.close();
        m_search.clear();
        m_pages.reloadAppearance();
        m_pages.setCurrentPage(0);
        m_backdrop.refresh(); // the Space's own wallpaper
    });
}

void GridPresenter::attach(const Services &services)
{
    m_activation.setWorkflowLaunchService(services.workflowLauncher);
    m_icons = services.appIcons;
    m_chooser = services.chooser;
    m_cells.setCustomIcons(m_icons.get());
    m_folderStyles = services.folderStyles;
    m_cells.setFolderStyles(m_folderStyles.get());
    if (services.workflows)
        m_workflows.attach(services.workflows, services.chooser);
    if (services.systemFolders)
        m_systemFolders.attach(services.systemFolders, services.folderAssets, services.chooser);
}

void GridPresenter::hide()
{
    Q_EMIT hideRequested();
}

void GridPresenter::openSettings()
{
    Q_EMIT hideRequested();
    Q_EMIT settingsRequested();
}

void GridPresenter::renameApp(const QString &key, const QString &name)
{
    const QString path = SlotKey::appPath(key);
    if (path.isEmpty())
        return;
    if (name.trimmed().isEmpty())
        m_names.removeCustomName(path);
    else
        m_names.setCustomName(path, name.trimmed());
    refreshApps();
}

void GridPresenter::refreshApps()
{
    m_pages.contentChanged();
    m_folder.refresh();
    m_search.rebuild();
    m_hidden.rebuild();
}

void GridPresenter::chooseIcon(const QString &key)
{
    if (SlotKey::appPath(key).isEmpty())
        return;
    QPointer<GridPresenter> self(this);
    FallbackFileChooser::chooseWith(m_chooser.get(), FileChooser::Kind::Image,
                                    tr("Choose an icon for %1").arg(titleOf(key)), [self, key](const QString &file) {
                                        if (self && !file.isEmpty())
                                            self->setIcon(key, file);
                                    });
}

void GridPresenter::setIcon(const QString &key, const QString &imageFile)
{
    const QString path = SlotKey::appPath(key);
    if (path.isEmpty() || !m_icons)
        return;
    QString error;
    if (!m_icons->importImage(path, imageFile, &error)) {
        // The stored error leads with its domain; the user reads the sentence.
        showNotice(error.section(QStringLiteral(": "), 1).isEmpty() ? error : error.section(QStringLiteral(": "), 1));
        return;
    }
    refreshApps();
}

void GridPresenter::resetIcon(const QString &key)
{
    const QString path = SlotKey::appPath(key);
    if (path.isEmpty() || !m_icons)
        return;
    m_icons->removeIcon(path);
    refreshApps();
}

bool GridPresenter::hasCustomIcon(const QString &key) const
{
    return m_icons && m_icons->icon(SlotKey::appPath(key)).has_value();
}

QVariantList GridPresenter::customizedApps() const
{
    QSet<QString> paths;
    for (auto it = m_names.all().cbegin(); it != m_names.all().cend(); ++it)
        paths.insert(it.key());
    if (m_icons)
        for (auto it = m_icons->all().cbegin(); it != m_icons->all().cend(); ++it)
            paths.insert(it.key());
    QList<QVariantMap> apps;
    for (const QString &path : paths) {
        const QString key = SlotKey::app(path);
        const GridCell cell = m_cells.cellFor(key);
        if (cell.kind != GridCell::Kind::App && cell.kind != GridCell::Kind::Unavailable)
            continue; // an app that is gone for good: nothing to show or reset here
        apps.append({{QStringLiteral("key"), key},
                     {QStringLiteral("title"), cell.title},
                     {QStringLiteral("iconPath"), cell.iconPath},
                     {QStringLiteral("renamed"), hasCustomName(key)},
                     {QStringLiteral("customIcon"), hasCustomIcon(key)}});
    }
    std::sort(apps.begin(), apps.end(), [](const QVariantMap &a, const QVariantMap &b) {
        return QString::localeAwareCompare(a.value(QStringLiteral("title")).toString(),
                                           b.value(QStringLiteral("title")).toString()) < 0;
    });
    QVariantList out;
    for (const QVariantMap &app : apps)
        out.append(app);
    return out;
}

QVariantList GridPresenter::folderTints() const
{
    QVariantList out;
    for (const FolderItem &folder : m_layout.folders()) {
        const QString id = Uuids::toText(folder.id);
        out.append(QVariantMap{{QStringLiteral("id"), id},
                               {QStringLiteral("name"), folder.name},
                               {QStringLiteral("tint"), m_cells.folderTint(id)}});
    }
    return out;
}

void GridPresenter::setFolderTint(const QString &folderId, const QString &tint)
{
    if (!m_folderStyles || !Uuids::fromText(folderId) || (!tint.isEmpty() && !QColor::isValidColorName(tint)))
        return;
    // The rest of the folder's look stays as it was.
    FolderIconStyle style = m_folderStyles->style(folderId).value_or(FolderIconStyle{});
    style.tint = tint.isEmpty() ? QString() : QColor::fromString(tint).name();
    if (style == FolderIconStyle{})
        m_folderStyles->removeStyle(folderId);
    else
        m_folderStyles->setStyle(folderId, style);
    m_pages.contentChanged();
}

bool GridPresenter::hasCustomName(const QString &key) const
{
    return m_names.customName(SlotKey::appPath(key)).has_value();
}

bool GridPresenter::removeWidget(const QString &widgetId)
{
    const auto id = Uuids::fromText(widgetId);
    return id && m_layout.removeWidget(*id);
}

void GridPresenter::setDisplay(QScreen *screen)
{
    m_pages.setDisplay(screen);
    if (screen)
        m_backdrop.setScreenSize(screen->size() * screen->devicePixelRatio());
}

void GridPresenter::notifyShown()
{
    m_drag.cancel();
    m_search.clear();
    m_folder.close();
    m_hidden.rebuild();
    Q_EMIT shown();
}

void GridPresenter::notifyHidden()
{
    // Nothing of a gesture may outlive the overlay: no timer turns a page
    // or makes a folder while it is hidden.
    m_drag.cancel();
}

void GridPresenter::showNotice(const QString &text)
{
    if (!text.isEmpty())
        m_noticeTimer.start();
    if (text == m_notice)
        return;
    m_notice = text;
    Q_EMIT noticeChanged();
}
