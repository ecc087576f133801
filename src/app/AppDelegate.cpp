#include "app/AppDelegate.h"

#include "app/ApplicationPlatform.h"
#include "app/LaunchpadWindowController.h"
#include "app/LegacyCachePurge.h"
#include "foundation/Logging.h"
#include "app/RegisteredDefaults.h"
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
        m_platform.activate(instance.processId);
        m_platform.terminate();
        return false;
    }

    purgeLegacyCachesOnce();
    m_platform.registerFonts();
    RegisteredDefaults::registerAll();

    windowController_ = std::make_unique<LaunchpadWindowController>(
        m_locations, m_catalogue, m_inputFactory ? m_inputFactory() : InputPlatform{});
    Q_EMIT windowControllerCreated(windowController_.get());
    if (m_statusItemFactory)
        statusBarController_ = m_statusItemFactory(*windowController_);

    // Anything but a stored Boolean false shows the dock icon.
    const QVariant showDockIcon =
        windowController_->composition().userDefaultsStore->persistedObject(QLatin1String(SettingsKeys::kShowDockIcon));
    m_platform.setDockIconVisible(!(showDockIcon.typeId() == QMetaType::Bool && !showDockIcon.toBool()));

    if (!m_launchedAsLoginItem)
        QMetaObject::invokeMethod(windowController_.get(), &LaunchpadWindowController::showOverlay, Qt::QueuedConnection);
    return true;
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
    if (windowController_)
        windowController_->showOverlay();
    return false;
}

void AppDelegate::applicationWillTerminate()
{
    // Every repository writes through; only the store's pending writes are flushed.
    if (windowController_)
        windowController_->composition().userDefaultsStore->synchronize();
}
