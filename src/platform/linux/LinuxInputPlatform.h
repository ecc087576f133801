#pragma once

#include "input/InputPlatform.h"

// The activation inputs' adaptors on a Linux X11 desktop: xcb key grabs,
// Qt's cursor with XInput 2 raw motion, libevdev touchpads and logind's
// sleep signal.
namespace LinuxInputPlatform {
InputPlatform create();
}
