#pragma once

#include <cairo.h>

#include <memory>
#include <optional>

#include "host/view/thin_lines.h"
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

/// Where and how something is painted. The window of the plane fills the surface; its size is in the
/// surface's units.
struct Surface {
  cairo_t* cairo = nullptr;
  double width = 0, height = 0;
  PlaneBox window;
  Projection projection;
  Ground ground = Ground::white;
  double unitsPerMillimetre = 1;
  /// Of surfaces of pixels, with data: lines along the axes lie on pixels, none is thinner than one, letters
  /// too small to be read are bars, and nothing outside of the clip changes.
  PixelRows pixels;
  /// By so many pixels the window has been moved, to the left and up: pictures of the same window at other
  /// places are the same to the last pixel.
  double shiftX = 0, shiftY = 0;
  Backdrop backdrop;
};

/// What stands out is painted in one colour, and wider by some units.
struct Accent {
  std::uint32_t rgb = 0;
  double widening = 0;
};

/// Paints lists one after another, or parts of them; what a part looks like doesn't depend on what came
/// before. The surface outlives the painter.
class Painter {
 public:
  explicit Painter(const Surface& surface);
  ~Painter();
  Painter(const Painter&) = delete;
  Painter& operator=(const Painter&) = delete;

  /// The picture's ground, and the backdrop.
  void paintGround();
  void paint(const DisplayList& list, std::uint32_t first, std::uint32_t count);
  void paint(const DisplayList& list);
  /// Something smaller than a pixel.
  void paintDot(const PlanePoint& at, const Ink& ink);
  void setAccent(const std::optional<Accent>& accent);

  /// By how much the ink of a list may leave the boxes of its items, in units of the surface.
  double reachOf(const DisplayList& list) const;

 private:
  class Work;
  std::unique_ptr<Work> work_;
};

}  // namespace host::view
