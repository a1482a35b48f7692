#pragma once

#include "solid/body.h"

namespace solid {

/// Whether the faces are the whole of a convex cell: closed, going round once, and none bent outwards against
/// its neighbour by more than the tolerance.
bool isConvexCell(const Body& body, std::span<const size_t> faces, std::int32_t cell, double tolerance);

}  // namespace solid
