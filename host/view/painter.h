#pragma once

#include <cairo.h>

#include "host/view/view.h"

namespace host::view {

enum class Ground { white, dark };
/// 0xRRGGBB on that ground.
std::uint32_t rgbOf(const Ink& ink, Ground ground);

/// A picture of faces that is laid over the whole surface, below the lines.
struct Backdrop {
  const std::vector<std::uint32_t>* pixels = nullptr;  // 0xAARRGGBB
  int width = 0, height = 0;
};

/// Where and how a list is painted. The window of the plane fills the surface; its size is in the
/// surface's units.
struct Surface {
  cairo_t* cairo = nullptr;
  double width = 0, height = 0;
  PlaneBox window;
  Projection projection;
  Ground ground = Ground::white;
  double unitsPerMillimetre = 1;
  /// Surfaces of pixels: lines along the axes lie on pixels, none is thinner than one, and letters too
  /// small to be read are bars.
  bool pixels = true;
  Backdrop backdrop;
};

void paint(const DisplayList& list, const Surface& surface);

}  // namespace host::view
