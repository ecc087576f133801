#pragma once

class LaunchpadViewModel;
class LaunchpadWindowController;
class WorkflowsViewModel;
struct CompositionRoot;

// What a command may use besides the loaded layout: the models and services
// of the process that carries it out (the running launcher, or the command's
// own headless session).
struct CommandContext {
    LaunchpadViewModel &layout;
    WorkflowsViewModel &workflows;
    CompositionRoot &composition;
    // Headless, the process ends with the command: a launch must run to its
    // last item first. The running launcher answers at once instead.
    bool waitForLaunches = false;
    // The running launcher (its inputs, and the views that follow a change);
    // null headless.
    LaunchpadWindowController *launcher = nullptr;
};
