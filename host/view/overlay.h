#pragma once

#include <vector>

#include "host/view/camera.h"
#include "host/view/display_list.h"

namespace host::view {

/// What is laid over a picture for a moment and keeps no trace in it. Nothing is owned.

/// In pixels, from `left` and `top` up to but without `right` and `bottom`.
struct PixelBox {
  int left = 0, top = 0, right = 0, bottom = 0;
  bool empty() const { return left >= right || top >= bottom; }
  int width() const { return right - left; }
  int height() const { return bottom - top; }
  void join(const PixelBox& other);
  PixelBox cutTo(const PixelBox& other) const;
  bool operator==(const PixelBox&) const = default;
};

/// A line over the picture: a rubber band, the border of a window of selection, a tracking line.
struct Band {
  std::vector<PixelPoint> points;
  /// 0xRRGGBB
  std::uint32_t rgb = 0xFFFFFF;
  double width = 1;
  bool closed = false, dashed = false;
  /// 0 to 1: how much the inside of a closed one is covered with its colour.
  double fill = 0;
};

/// A sign of fixed size at a point of the drawing.
struct Marker {
  enum Kind : unsigned char {
    end,
    middle,
    centre,
    node,
    quadrant,
    intersection,
    insertion,
    perpendicular,
    tangent,
    nearest,
    grip,
    warmGrip,
    hotGrip
  } kind = end;
  AcGePoint3d at;
};

struct Overlay {
  /// Images of drags, as they were recorded.
  std::vector<const DisplayList*> images;
  /// Entities of the scene that stand out: under the cursor, and chosen.
  std::vector<AcDbObjectId> hovered, chosen;
  std::vector<Band> bands;
  std::vector<Marker> markers;
  bool empty() const {
    return images.empty() && hovered.empty() && chosen.empty() && bands.empty() && markers.empty();
  }
};

}  // namespace host::view
