#pragma once

#include <cstdint>

#include "host/view/overlay.h"
#include "host/view/view.h"

namespace host::view {

/// Opaque pixels, 0xAARRGGBB, and the part of them that may be changed.
struct PixelRows {
  std::uint32_t* data = nullptr;
  /// Pixels from row to row.
  int width = 0, height = 0;
  PixelBox clip;
};

/// Smooth lines of about a pixel's width, which drawings are full of, straight onto pixels. What a line does
/// to a pixel depends on the line alone, not on the clip: parts of a picture fit together without a seam.
class ThinLines {
 public:
  explicit ThinLines(const PixelRows& rows) : rows_(rows) {}
  /// `width` in pixels, up to 2; the ends reach `cap` beyond the points. `opacity` from 0 to 1.
  void line(const PlanePoint& from, const PlanePoint& to, std::uint32_t rgb, double width = 1,
            double opacity = 1, double cap = 0.5);
  /// The pixel that holds the point.
  void dot(const PlanePoint& at, std::uint32_t rgb);

 private:
  void blend(int x, int y, std::uint32_t rgb, double coverage);
  PixelRows rows_;
};

}  // namespace host::view
