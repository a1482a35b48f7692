#pragma once

#include <vector>

#include "host/view/view.h"

namespace host::view {

/// Cuts a segment to a box; false when nothing is left.
bool clipSegment(const PlaneBox& box, PlanePoint& from, PlanePoint& to);
/// Cuts a filled polygon to a box, edge by edge.
std::vector<PlanePoint> clipPolygon(const PlaneBox& box, std::vector<PlanePoint> polygon);

}  // namespace host::view
