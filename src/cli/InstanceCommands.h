#pragma once

#include "app/InstanceChannel.h"

class LaunchpadWindowController;

// The running launcher's side of the command line: a request
// {"command": "cli", "args": [...]} is carried out on its own model, so the
// grid on screen changes at once and no second writer races it.
namespace InstanceCommands {
void handle(const QJsonObject &request, LaunchpadWindowController &controller, InstanceChannel::Reply reply);
}
