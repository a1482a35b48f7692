#pragma once

#include "host/view/overlay.h"
#include "host/view/painter.h"
#include "host/view/scene.h"

namespace host::view {

/// The pixels that an overlay covers, or some more, cut to the surface's.
PixelBox boxOf(const Overlay& overlay, const Scene& scene, const Surface& surface);
/// Onto a surface of pixels, within its clip.
void paintOverlay(const Overlay& overlay, const Scene& scene, const Surface& surface);

}  // namespace host::view
