#pragma once

#include "app/InstanceChannel.h"
#include "cli/Verbs.h"

#include <QStringList>

class LaunchpadWindowController;

// The running launcher's side of the command line: a request
// {"command": "cli", "args": [...]} is carried out on its own model, so the
// grid on screen changes at once and no second writer races it.
namespace InstanceCommands {

// What a request asks for, decided before anything is touched.
struct Invocation {
    enum class Kind {
        Activate, // {"command": "activate"}: show the overlay
        Overlay,  // toggle, show or hide the overlay, as overlay says
        Layout,   // run the layout command args (verb first) once loaded
        Spaces,   // run the Spaces command args (verb first)
        Refused,  // nothing runs; reply is the answer
    };
    Kind kind = Kind::Refused;
    Verbs::OverlayAction overlay = Verbs::OverlayAction::None;
    QStringList args;
    bool changesLayout = false; // a Layout command whose answer waits for the save
    // The client's working folder: relative file names in args are its.
    QString workingDirectory;
    QJsonObject reply;
};

Invocation interpret(const QJsonObject &request);
void handle(const QJsonObject &request, LaunchpadWindowController &controller, InstanceChannel::Reply reply);

}
