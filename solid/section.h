#pragma once

#include "solid/body.h"

/// Sections of ducts and rods.

namespace solid {

/// The end of a piece. The axes are along the piece, of the width and of the height; the last two need not be
/// at right angles or of length 1 exactly.
struct SectionEnd {
  Point centre;
  bool rectangular = true;
  double width = 0, height = 0;
  Vector axes[3];
};

/// A convex outline in a plane, one surface number for each edge, which belongs to a quarter of the outline
/// or is flat. The order is to the left about width × height.
struct Ring {
  std::vector<Point> points;
  std::vector<std::int32_t> quarters;
};

/// Facets of a circle: eight for each step of `detail`; 0 and less count as 3, and 256 is the most.
int facetsOf(int detail);

/// The outline: four corners, a circle, or with unequal sizes a flat oval of half circles and straight sides.
/// Vertices lie on the exact outline, those on the axes without rounding. Empty for sizes that aren't above 0
/// or values that can't be computed with.
Ring ringOf(const SectionEnd& end, int detail);

/// Largest distance of the outline from the centre along a unit vector in its plane, times two.
double sizeAlong(const SectionEnd& end, const Vector& direction);

}  // namespace solid
