#include "cli/HeadlessSession.h"

#include "app/RegisteredDefaults.h"
#include "catalogue/CatalogueCache.h"
#include "layout/LaunchpadViewModel.h"
#include "layout/WorkflowsViewModel.h"
#include "storage/AppearanceRepository.h"
#include "storage/FileSystemStore.h"
#include "storage/MigrationService.h"
#include "storage/UserDefaultsStore.h"

#include <QEventLoop>

HeadlessSession::HeadlessSession(const StorageLocations &locations, const CataloguePlatform &catalogue)
{
    RegisteredDefaults::registerAll();
    m_composition = CompositionRoot::build(locations, catalogue);
    MigrationService(m_composition.userDefaultsStore, m_composition.fileSystemStore).runAll();
    m_model = std::make_unique<LaunchpadViewModel>(m_composition.layoutServices());
    // Pages as the user last saw them: moves search, and widgets are bounded
    // by, the user's grid, not a default one.
    const DisplayProfile display{m_composition.appearanceRepo->lastDisplay()};
    m_model->setGridGeometry(m_composition.appearanceRepo->columns(display),
                             m_composition.appearanceRepo->rows(display));
    // What the launcher saw last: an app that moved to another path is only
    // recognised by the identity it had at the old one.
    m_model->preloadApps(CatalogueCache::load(
        m_composition.fileSystemStore->pathFor(QLatin1String(CatalogueCache::kFileName))));
    m_workflows = std::make_unique<WorkflowsViewModel>(*m_model, m_composition.workflowIconsDirectory(), [this] {
        return m_composition.otherProfiles ? m_composition.otherProfiles() : OtherProfiles{};
    });
}

CommandContext HeadlessSession::context()
{
    return {*m_model, *m_workflows, m_composition, true};
}

HeadlessSession::~HeadlessSession()
{
    m_workflows.reset(); // before the model it edits through
}

LaunchpadViewModel &HeadlessSession::loadedModel()
{
    QEventLoop loop;
    QObject::connect(m_model.get(), &LaunchpadViewModel::loadFinished, &loop, [&] {
        if (!m_model->isLoading())
            loop.quit();
    });
    m_model->loadInitial();
    if (m_model->isLoading())
        loop.exec();
    return *m_model;
}

bool HeadlessSession::flush()
{
    return m_composition.synchronize(&m_saveError);
}

QString HeadlessSession::saveError() const
{
    return m_saveError;
}

SpacesViewModel &HeadlessSession::spaces()
{
    return *m_composition.spacesViewModel;
}
