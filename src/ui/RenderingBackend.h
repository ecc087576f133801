#pragma once

// Chooses how Qt Quick draws the overlay, before the application object
// exists. Without a GPU (no DRM render node: virtual machines, Xvfb) OpenGL
// would run on a software rasteriser that costs about 90 MB and draws no
// faster than Qt Quick's own software renderer, so that one is used instead.
// QT_QUICK_BACKEND, when set, is left to decide.
namespace RenderingBackend {
void chooseBeforeApplication();
}
