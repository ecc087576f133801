#include "app/AppDelegate.h"

#include "app/ApplicationPlatform.h"
#include "app/LaunchpadWindowController.h"
#include "app/LegacyCachePurge.h"
#include "foundation/Logging.h"
#include "app/RegisteredDefaults.h"
#include "spaces/SpacesViewModel.h"
#include "storage/SettingsKeys.h"
#include "storage/UserDefaultsStore.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QPointer>
#include <QThreadPool>

AppDelegate::AppDelegate(ApplicationPlatform &platform, StorageLocations locations, QObject *parent)
    : QObject(parent)
    , m_platform(platform)
    , m_locations(std::move(locations))
{
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationWillFinishLaunching()
{
    m_launchedAsLoginItem = m_platform.launchedAsLoginItem();
    if (m_launchedAsLoginItem)
        qCDebug(lcApp, "Cold launch via Login Item — starting in background without opening overlay.");
}

bool AppDelegate::applicationDidFinishLaunching()
{
    const qint64 ownPid = m_platform.ownProcessId();
    for (const auto &instance : m_platform.runningInstances()) {
        if (instance.processId == ownPid || instance.isTerminated)
            continue;
        qCCritical(lcApp, "Another Tillmora instance is already running (pid %d); activating it and quitting this one.",
                   int(instance.processId));
        // A start at login asked for nothing to be shown: the running copy
        // is left as it is (its overlay stays hidden).
        if (!m_launchedAsLoginItem)
            m_platform.activate(instance.processId);
        m_platform.terminate();
        return false;
    }

    // The launcher never waits for the disk or another process's lock on its
    // UI thread; its commands are answered once their change is on disk.
    UserDefaultsStore::setBackgroundWrites(true);
    purgeLegacyCachesOnce();
    m_platform.registerFonts();
    RegisteredDefaults::registerAll();

    m_windowController = std::make_unique<LaunchpadWindowController>(
        m_locations, m_catalogue, m_inputFactory ? m_inputFactory() : InputPlatform{});
    Q_EMIT windowControllerCreated(m_windowController.get());
    if (m_statusItemFactory)
        m_statusBarController = m_statusItemFactory(*m_windowController);

    m_platform.setDockIconVisible(showsDockIcon());

    if (!m_launchedAsLoginItem)
        QMetaObject::invokeMethod(m_windowController.get(), &LaunchpadWindowController::showOverlay, Qt::QueuedConnection);
    return true;
}

bool AppDelegate::showsDockIcon() const
{
    if (!m_windowController)
        return true;
    // Anything but a stored Boolean false shows the dock icon.
    const QVariant stored =
        m_windowController->composition().userDefaultsStore->persistedObject(QLatin1String(SettingsKeys::kShowDockIcon));
    return !(stored.typeId() == QMetaType::Bool && !stored.toBool());
}

void AppDelegate::setShowsDockIcon(bool show)
{
    if (!m_windowController)
        return;
    m_windowController->composition().userDefaultsStore->set(show, QLatin1String(SettingsKeys::kShowDockIcon));
    m_platform.setDockIconVisible(show);
    Q_EMIT dockIconVisibilityChanged(show);
}

void AppDelegate::purgeLegacyCachesOnce()
{
    auto store = UserDefaultsStore::standard(m_locations.configDirectory);
    if (store->boolValue(QLatin1String(SettingsKeys::kLegacyOrphanPurgeDone)))
        return;
    const QString dataDirectory = m_locations.dataDirectory;
    QPointer<AppDelegate> self(this);
    QThreadPool::globalInstance()->start(
        [dataDirectory, self, store] {
            LegacyCachePurge::run(dataDirectory);
            // Stores are confined to the main thread; the flag is written there.
            QMetaObject::invokeMethod(qApp, [self, store] {
                if (self)
                    store->set(true, QLatin1String(SettingsKeys::kLegacyOrphanPurgeDone));
            });
        },
        QThread::LowPriority);
}

bool AppDelegate::applicationShouldHandleReopen(bool)
{
    if (m_windowController)
        m_windowController->showOverlay();
    return false;
}

void AppDelegate::applicationWillTerminate()
{
    // Every repository writes through; the active Space's snapshot takes in
    // the run's last edits, and here the last writes are waited for.
    UserDefaultsStore::setBackgroundWrites(false);
    if (m_windowController) {
        m_windowController->composition().spacesViewModel->persist();
        m_windowController->composition().synchronize();
    }
}
