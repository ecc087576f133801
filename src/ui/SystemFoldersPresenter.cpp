#include "ui/SystemFoldersPresenter.h"

#include "catalogue/SystemFolderPanelAssetCache.h"
#include "catalogue/SystemFoldersService.h"
#include "foundation/Uuids.h"
#include "layout/LaunchpadViewModel.h"
#include "platform/FileChooser.h"
#include "ui/FallbackFileChooser.h"
#include "ui/FolderPresenter.h"

#include <QDir>
#include <QFileInfo>
#include <QPointer>

SystemFoldersPresenter::SystemFoldersPresenter(LaunchpadViewModel &layout, FolderPresenter &folder, QObject *parent)
    : QObject(parent)
    , m_layout(layout)
    , m_folder(folder)
{
    connect(&m_folder, &FolderPresenter::openChanged, this, [this] {
        // Each opening looks at the disk again: a folder may have come back.
        if (m_service && m_folder.isOpen())
            m_service->clearValidPathCache();
        rebuild();
    });
    connect(&m_layout, &LaunchpadViewModel::foldersChanged, this, &SystemFoldersPresenter::rebuild);
}

SystemFoldersPresenter::~SystemFoldersPresenter() = default;

void SystemFoldersPresenter::attach(std::shared_ptr<SystemFoldersService> service,
                                    std::shared_ptr<SystemFolderPanelAssetCache> assets,
                                    std::shared_ptr<FileChooser> chooser)
{
    m_service = std::move(service);
    m_assets = std::move(assets);
    m_chooser = std::move(chooser);
    rebuild();
}

void SystemFoldersPresenter::rebuild()
{
    QVariantList entries;
    const auto id = Uuids::fromText(m_folder.folderId());
    const auto folder = id && m_service ? m_layout.folder(*id) : std::nullopt;
    if (folder) {
        for (const QString &path : folder->systemFolderPaths) {
            entries.append(QVariantMap{{QStringLiteral("path"), path},
                                       {QStringLiteral("title"), m_assets->displayName(path)},
                                       {QStringLiteral("iconName"), m_assets->iconName(path)},
                                       {QStringLiteral("missing"), !m_service->isValidPath(path)}});
        }
    }
    if (entries != m_entries) {
        m_entries = entries;
        Q_EMIT entriesChanged();
    }
}

bool SystemFoldersPresenter::open(const QString &path)
{
    if (!m_service)
        return false;
    if (!m_service->isValidPath(path)) {
        Q_EMIT notice(tr("“%1” is no longer at %2. Put it back, or remove it from this folder.")
                          .arg(m_assets->displayName(path), path));
        return false;
    }
    const auto result = m_service->openFolder(path);
    if (!result) {
        Q_EMIT notice(tr("Could not open %1: %2").arg(path, result.error));
        rebuild(); // it may have just gone
        return false;
    }
    Q_EMIT opened();
    return true;
}

bool SystemFoldersPresenter::add(const QString &given)
{
    const auto id = Uuids::fromText(m_folder.folderId());
    auto folder = id && m_service ? m_layout.folder(*id) : std::nullopt;
    const QString path = QDir::cleanPath(given);
    if (!folder || path.isEmpty() || !QFileInfo(path).isDir() || folder->systemFolderPaths.contains(path))
        return false;
    m_service->rememberFolder(path);
    folder->systemFolderPaths.append(path);
    return m_layout.updateFolder(*folder);
}

bool SystemFoldersPresenter::remove(const QString &path)
{
    const auto id = Uuids::fromText(m_folder.folderId());
    auto folder = id ? m_layout.folder(*id) : std::nullopt;
    if (!folder || folder->systemFolderPaths.removeAll(path) == 0)
        return false;
    return m_layout.updateFolder(*folder);
}

void SystemFoldersPresenter::chooseAndAdd()
{
    QPointer<SystemFoldersPresenter> self(this);
    const auto chosen = [self](const QString &path) {
        if (self && !path.isEmpty())
            self->add(path);
    };
    const QString title = tr("Choose a folder to put in “%1”").arg(m_folder.name());
    FallbackFileChooser::chooseWith(m_chooser.get(), FileChooser::Kind::Folder, title, chosen);
}
