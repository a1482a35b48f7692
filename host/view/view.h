#pragma once

#include <array>
#include <optional>

#include "host/view/display_list.h"

namespace host::view {

/// From the world to a picture's plane, x to the right and y up.

struct PlanePoint {
  double x = 0, y = 0;
};
struct PlaneBox {
  double left = 1e300, bottom = 1e300, right = -1e300, top = -1e300;
  bool empty() const { return left > right; }
  void add(const PlanePoint& p);
  void join(const PlaneBox& other);
  bool meets(const PlaneBox& o) const {
    return left <= o.right && o.left <= right && bottom <= o.top && o.bottom <= top;
  }
};

/// A view along parallel lines of sight.
struct Projection {
  AcGeVector3d right{1, 0, 0}, up{0, 1, 0};
  /// Seen from above.
  static Projection plan() { return {}; }
  /// Seen from above, left and in front, all three axes in the same length.
  static Projection isometric();
  /// From what is seen to the one who looks.
  AcGeVector3d towards() const { return right.crossProduct(up); }
  PlanePoint operator()(const AcGePoint3d& p) const { return (*this)(p.asVector()); }
  PlanePoint operator()(const AcGeVector3d& v) const { return {v.dotProduct(right), v.dotProduct(up)}; }
};

/// An item's box in the plane, around its exact curve and the ink of its letters.
PlaneBox boxOf(const DisplayList& list, const Item& item, const Projection& projection);
/// Of all items; empty for a list without any.
PlaneBox boxOf(const DisplayList& list, const Projection& projection);

/// Width of letters on their base line in units of their `x`, and the box of their ink.
struct LettersInk {
  double advance = 0, left = 0, bottom = 0, right = 0, top = 0;
};
LettersInk inkOf(const Letters& letters);

}  // namespace host::view
