#pragma once

#include "app/CompositionRoot.h"
#include "cli/CommandContext.h"

#include <memory>

class LaunchpadViewModel;
class SpacesViewModel;

// The launcher's model without the launcher: migrations, the stored profile
// and the reconciliation with the installed applications, for a command run
// while no instance is up. Nothing here needs a display.
class HeadlessSession {
public:
    HeadlessSession(const StorageLocations &locations, const CataloguePlatform &catalogue);
    ~HeadlessSession();

    // Blocks (running the event loop) until loading and reconciliation end.
    LaunchpadViewModel &loadedModel();
    // What commands run on; call after loadedModel().
    CommandContext context();
    // Writes everything to disk before the process exits. False when that
    // failed; saveError() says why.
    bool flush();
    QString saveError() const;
    // The Spaces, without the grid (a switch here only moves the profile;
    // no grid is on screen to reload).
    SpacesViewModel &spaces();

private:
    CompositionRoot m_composition;
    std::unique_ptr<LaunchpadViewModel> m_model;
    QString m_saveError;
    std::unique_ptr<WorkflowsViewModel> m_workflows;
};
