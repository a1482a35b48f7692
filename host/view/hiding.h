#pragma once

#include "host/view/depth_buffer.h"
#include "host/view/painter.h"

namespace host::view {

/// How much faces cover: nothing, what lies behind them, or that and they are seen in their light.
enum class Visual { wires, hidden, shaded };

/// What of a list is seen when its faces hide what lies behind them.
struct SeenList {
  /// Lines as far as they are seen, and no faces; the drawing's scale must still be that of the whole list.
  DisplayList lines;
  /// The faces in their light, finer than the picture; 0 where there are none. Empty without faces.
  std::vector<std::uint32_t> pixels;
  int width = 0, height = 0;
};

/// `window` is the part of the plane that a picture of `width` by `height` shows.
SeenList seenList(const DisplayList& list, const Projection& projection, const PlaneBox& window, int width,
                  int height, Ground ground);

}  // namespace host::view
