#pragma once

#include "solid/complex.h"

/// Cuts and unions of bodies.

namespace solid {

/// Keeps what lies below the plane. The body may become empty.
void cutTo(Body& body, const Plane& plane);
/// Takes a body of one cell away from another. The body may become empty.
void subtract(Body& body, const Body& tool);
/// Unites bodies whose insides overlap, each at the place of the first one; others stay. Bodies that are
/// too many pieces together stay as they are too.
void unite(std::vector<Body>& bodies);
/// True when the insides have a part in common.
bool overlap(const Body& a, const Body& b);

}  // namespace solid
