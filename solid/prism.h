#pragma once

#include "solid/body.h"

namespace solid {

/// A plane outline with the surface number of each edge, divided into convex polygons of its corners.
struct PlanShape {
  std::vector<Point> outline;
  std::vector<std::int32_t> surfaces;
  std::vector<std::vector<Index>> pieces;  // to the left about `thickness`
};

/// One prism a piece, with walls between. The outline runs to the left about `thickness`, along which it is
/// moved.
Body prisms(const PlanShape& shape, const Vector& thickness);

/// A body from a closed simple outline in a plane, `thickness` thick along the outline's normal (below 0:
/// against it). Empty for less than three points, no thickness, points on one line, out of one plane by more
/// than a millionth of its size, and outlines that cross or touch themselves.
Body skin(std::vector<Point> outline, double thickness);

}  // namespace solid
