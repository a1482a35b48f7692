#pragma once

#include <cstdint>
#include <vector>

#include "host/view/view.h"

namespace host::view {

/// Faces as a picture's plane shows them: the nearest one at each pixel, and what it hides.
class DepthBuffer {
 public:
  /// `window` of the plane fills the buffer, its top at the first row.
  DepthBuffer(int width, int height, const PlaneBox& window, const Projection& projection);

  /// A flat convex polygon; `rgb` is its colour in full light.
  void addFace(const AcGePoint3d* corners, std::uint32_t count, std::uint32_t rgb);
  /// Parts of a segment that no face hides, as shares of its length.
  std::vector<std::pair<double, double>> visibleParts(const AcGePoint3d& from, const AcGePoint3d& to) const;
  bool isVisible(const AcGePoint3d& point) const;

  int width() const { return width_; }
  int height() const { return height_; }
  /// A pixel for each place, 0xAARRGGBB; 0 where there is no face.
  const std::vector<std::uint32_t>& pixels() const { return pixels_; }

 private:
  /// In pixels, with the height above the plane in pixels too.
  struct Spot {
    double x, y, z;
  };
  Spot spot(const AcGePoint3d& point) const;
  void fill(const Spot (&corners)[3], std::uint32_t argb);
  bool isHidden(const Spot& spot) const;

  int width_, height_;
  PlaneBox window_;
  Projection projection_;
  AcGeVector3d towards_;
  double scale_, ground_ = 0;
  bool hasGround_ = false;
  std::vector<float> nearest_;  // height of the face that shows
  std::vector<float> hiding_;   // the same, drawn back by what a face rises within a pixel
  std::vector<std::uint32_t> pixels_;
};

}  // namespace host::view
