#include "spaces/SpacesViewModel.h"

#include "foundation/LogTexts.h"
#include "foundation/Logging.h"
#include "foundation/Uuids.h"
#include "layout/LaunchpadViewModel.h"
#include "spaces/SpaceStorageProvider.h"
#include "spaces/SpaceTexts.h"
#include "spaces/SpacesAutoSwitchService.h"
#include "spaces/SpacesRepository.h"
#include "spaces/SpacesSnapshotService.h"
#include "spaces/ThemeImporter.h"
#include "storage/UserDefaultsStore.h"

#include <QDir>
#include <QJsonDocument>

SpacesViewModel::SpacesViewModel(std::shared_ptr<SpacesRepository> repository,
                                 std::shared_ptr<SpacesSnapshotService> snapshots,
                                 std::shared_ptr<SpaceStorageProvider> provider, QObject *parent)
    : QObject(parent)
    , m_repository(std::move(repository))
    , m_snapshots(std::move(snapshots))
    , m_provider(std::move(provider))
{
    m_autoSave.setSingleShot(true);
    m_autoSave.setInterval(kAutoSaveDelayMs);
    connect(&m_autoSave, &QTimer::timeout, this, [this] {
        if (const auto active = activeSpaceId())
            saveSnapshotIfChanged(*active, false);
    });
    m_spaces = m_repository->loadSpaces();
    if (const auto active = activeSpaceId())
        m_snapshots->recoverActiveWallpaper(*m_provider->storeForSpace(*active), m_snapshots->assetFolder(*active));
}

SpacesViewModel::~SpacesViewModel() = default;

void SpacesViewModel::restoreActiveSpace(SpaceStorageProvider &provider, SpacesRepository &repository)
{
    auto active = repository.activeSpaceId();
    const QList<SpaceItem> spaces = repository.loadSpaces();
    if (active && spaces.isEmpty()) {
        repository.setActiveSpaceId(std::nullopt);
        qCInfo(lcSpaces, LogTexts::kMigrationClearedActiveSpace);
        active.reset();
    } else if (active && std::none_of(spaces.cbegin(), spaces.cend(), [&](const SpaceItem &s) { return s.id == *active; })) {
        // A Space that is gone cannot be shown; its suite (if any) is left
        // alone, and the user is on the standard profile.
        qCWarning(lcSpaces, "Active Space %s is not in the Spaces list; using the standard profile",
                  qUtf8Printable(Uuids::toText(*active)));
        repository.setActiveSpaceId(std::nullopt);
        active.reset();
    }
    provider.setActiveSpaceId(active);
}

void SpacesViewModel::reload()
{
    m_spaces = m_repository->loadSpaces();
    Q_EMIT spacesChanged();
    auto stored = m_repository->activeSpaceId();
    if (stored && !space(*stored))
        stored.reset();
    if (stored != activeSpaceId())
        switchTo(stored, false);
}

void SpacesViewModel::setLayoutModel(LaunchpadViewModel *layout)
{
    for (const auto &c : std::as_const(m_layoutConnections))
        disconnect(c);
    m_layoutConnections.clear();
    m_layout = layout;
    if (!layout)
        return;
    for (auto signal : {&LaunchpadViewModel::layoutRevisionChanged, &LaunchpadViewModel::foldersChanged,
                        &LaunchpadViewModel::appsChanged, &LaunchpadViewModel::widgetsChanged,
                        &LaunchpadViewModel::workflowsChanged})
        m_layoutConnections.append(connect(layout, signal, this, &SpacesViewModel::scheduleAutoSave));
    m_layoutConnections.append(connect(layout, &LaunchpadViewModel::loadFinished, this, [this] {
        if (m_layout && !m_layout->isLoading())
            setTransitioning(false);
    }));
}

void SpacesViewModel::setAutoSwitchService(SpacesAutoSwitchService *service)
{
    m_autoSwitch = service;
}

std::shared_ptr<UserDefaultsStoreType> SpacesViewModel::standardStore() const
{
    return m_provider->mainStore();
}

std::optional<SpaceItem> SpacesViewModel::space(const QUuid &id) const
{
    for (const SpaceItem &s : m_spaces)
        if (s.id == id)
            return s;
    return std::nullopt;
}

std::optional<QUuid> SpacesViewModel::activeSpaceId() const
{
    return m_provider->activeSpaceId();
}

QString SpacesViewModel::activeSpaceIdText() const
{
    const auto id = activeSpaceId();
    return id ? Uuids::toText(*id) : QString();
}

QVariantList SpacesViewModel::spacesForView() const
{
    QVariantList list;
    for (const SpaceItem &s : m_spaces)
        list.append(QVariantMap{{"id", Uuids::toText(s.id)},
                                {"name", s.name},
                                {"emoji", s.emoji},
                                {"color", s.iconBackgroundColor},
                                {"isCurrent", s.isCurrent},
                                {"hasHotKey", s.hasHotKey()}});
    return list;
}

void SpacesViewModel::saveList()
{
    m_repository->saveSpaces(m_spaces);
    Q_EMIT spacesChanged();
}

SpaceItem SpacesViewModel::createSpace(const QString &name, const QString &emoji, const QString &color,
                                       bool withCurrentSettings)
{
    SpaceItem space;
    space.id = QUuid::createUuid();
    space.snapshotId = space.id;
    space.name = name;
    space.emoji = emoji;
    space.iconBackgroundColor = color;
    space.createdAt = QDateTime::currentDateTimeUtc();

    QJsonObject snapshot;
    if (withCurrentSettings) {
        snapshot = m_snapshots->capture(*m_provider->activeStore());
        m_snapshots->adoptFiles(snapshot, m_snapshots->assetFolder(space.id));
    }
    return addSpace(space, snapshot);
}

SpaceItem SpacesViewModel::addSpace(SpaceItem space, const QJsonObject &snapshot)
{
    space.isCurrent = false;
    m_repository->saveSnapshot(snapshot, space.id);
    // The suite is complete before the Space is ever opened.
    m_snapshots->apply(snapshot, *m_provider->storeForSpace(space.id), m_snapshots->assetFolder(space.id));
    m_spaces.append(space);
    saveList();
    return space;
}

std::optional<SpaceItem> SpacesViewModel::hotKeyOwner(qint64 keyCode, quint64 modifiers, const QUuid &except) const
{
    for (const SpaceItem &s : m_spaces)
        if (s.id != except && s.hasHotKey() && *s.hotKeyKeyCode == keyCode && *s.hotKeyModifiers == modifiers)
            return s;
    return std::nullopt;
}

bool SpacesViewModel::updateSpace(const SpaceItem &edited, QString *errorKey)
{
    if (edited.hasHotKey() && hotKeyOwner(*edited.hotKeyKeyCode, *edited.hotKeyModifiers, edited.id)) {
        if (errorKey)
            *errorKey = QLatin1String(SpaceTexts::kConflictAlert);
        return false;
    }
    for (SpaceItem &s : m_spaces) {
        if (s.id != edited.id)
            continue;
        const bool current = s.isCurrent;
        s = edited;
        s.isCurrent = current;
        saveList();
        return true;
    }
    return false;
}

bool SpacesViewModel::deleteSpace(const QUuid &id, QString *error)
{
    if (!space(id))
        return false;
    if (activeSpaceId() == id)
        switchTo(std::nullopt, false);
    m_spaces.removeIf([&](const SpaceItem &s) { return s.id == id; });
    saveList();
    // Nothing of a deleted Space is read again: its snapshot, suite and files go.
    m_repository->removeSnapshot(id);
    bool ok = m_provider->removeSuite(id, error);
    QDir assets(m_snapshots->assetFolder(id));
    if (assets.exists() && !assets.removeRecursively()) {
        ok = false;
        if (error && error->isEmpty())
            *error = QStringLiteral("could not remove %1").arg(assets.path());
    }
    if (m_lastSavedForSpaceId == id)
        m_lastSavedForSpaceId = QUuid();
    return ok;
}

void SpacesViewModel::switchTo(std::optional<QUuid> target, bool byUser)
{
    const std::optional<QUuid> current = activeSpaceId();
    if (target && !space(*target))
        return;
    if (target != current)
        Q_EMIT switchStarted();
    if (byUser) {
        m_provider->mainStore()->removeObject(QLatin1String(SpacesAutoSwitchService::kSuppressKey));
        if (m_autoSwitch && current && target != current)
            m_autoSwitch->noteManualSelection(*current);
    }
    if (current)
        saveSnapshotIfChanged(*current, true);
    if (target == current)
        return;

    if (!current)
        m_snapshots->backUpStandard();
    else if (!target)
        m_snapshots->restoreStandard();

    m_provider->setActiveSpaceId(target);
    m_repository->setActiveSpaceId(target);
    for (SpaceItem &s : m_spaces)
        s.isCurrent = target && s.id == *target;
    saveList();

    if (target) {
        m_isApplyingSnapshot = true;
        auto suite = m_provider->storeForSpace(*target);
        const QString assets = m_snapshots->assetFolder(*target);
        if (auto snapshot = m_repository->loadSnapshot(*target)) {
            m_snapshots->recoverHiddenApps(*snapshot, *suite);
            m_snapshots->apply(*snapshot, *suite, assets);
        }
        m_snapshots->recoverActiveWallpaper(*suite, assets);
        m_isApplyingSnapshot = false;
    }
    m_autoSave.stop();
    Q_EMIT activeSpaceChanged();
    Q_EMIT spaceDidSwitch();
    if (m_layout) {
        // The reload's own saves are the new profile's, not the user's edits.
        setTransitioning(true);
        m_layout->loadInitial();
        if (!m_layout->isLoading())
            setTransitioning(false);
    }
}

void SpacesViewModel::persist()
{
    m_autoSave.stop();
    if (const auto active = activeSpaceId())
        saveSnapshotIfChanged(*active, false);
}

void SpacesViewModel::refreshSnapshots()
{
    for (const SpaceItem &s : std::as_const(m_spaces))
        if (s.id != activeSpaceId())
            m_repository->saveSnapshot(m_snapshots->capture(*m_provider->storeForSpace(s.id)), s.id);
}

void SpacesViewModel::adoptPendingIcons(const QList<AppItem> &installed)
{
    bool changedOther = false;
    for (const SpaceItem &s : std::as_const(m_spaces)) {
        if (ThemeImporter::applyPendingIcons(m_snapshots->assetFolder(s.id), *m_provider->storeForSpace(s.id),
                                             installed) == 0)
            continue;
        if (s.id == activeSpaceId())
            saveSnapshotIfChanged(s.id, false);
        else
            changedOther = true;
    }
    if (changedOther)
        refreshSnapshots();
}

void SpacesViewModel::switchToSpace(const QString &id)
{
    switchTo(id.isEmpty() ? std::nullopt : Uuids::fromText(id), true);
}

QString SpacesViewModel::createSpaceFromOverlay(const QString &name, const QString &emoji, const QString &color,
                                                bool withCurrentSettings)
{
    return Uuids::toText(createSpace(name, emoji, color, withCurrentSettings).id);
}

void SpacesViewModel::scheduleAutoSave()
{
    if (m_isApplyingSnapshot || m_isTransitioning || !activeSpaceId())
        return;
    m_autoSave.start();
}

void SpacesViewModel::saveSnapshotIfChanged(const QUuid &spaceId, bool force)
{
    const QJsonObject snapshot = m_snapshots->capture(*m_provider->storeForSpace(spaceId));
    const QByteArray bytes = QJsonDocument(snapshot).toJson(QJsonDocument::Compact);
    if (!force && spaceId == m_lastSavedForSpaceId && bytes == m_lastSavedSnapshotData)
        return;
    m_repository->saveSnapshot(snapshot, spaceId);
    m_lastSavedSnapshotData = bytes;
    m_lastSavedForSpaceId = spaceId;
}

void SpacesViewModel::setTransitioning(bool transitioning)
{
    if (m_isTransitioning == transitioning)
        return;
    m_isTransitioning = transitioning;
    Q_EMIT isTransitioningChanged();
}
