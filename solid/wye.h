#pragma once

#include <array>

#include "solid/section.h"

/// Wyes: a head that ends in a junction, and two tails that leave it.

namespace solid {

/// Limbs in the order head, tail 1, tail 2. The head's axis points to the junction, those of the tails away
/// from it.
using Limbs = std::array<SectionEnd, 3>;

struct Junction {
  Point meet;
  /// For each limb its end section's corners, and the same ones moved to the junction, in the order -w-h +w-h
  /// +w+h -w+h.
  std::array<std::array<Point, 8>, 3> corners;
  /// For the pairs head and tail 1, head and tail 2, tail 1 and tail 2: the junction, the inner and the outer
  /// corner of the pair's walls, the two limbs' ends, and a point one unit along the normal of the pair's
  /// plane.
  std::array<std::array<Point, 6>, 3> pairs;
};

/// Moves the three ends beyond the junction, and `collar` further. False, with nothing changed, when a tail
/// runs back along the head, both tails agree, or the lines don't meet within half a section.
bool prepareWye(Limbs& limbs, double collar, Junction& junction);

/// Limbs in one plane whose walls meet pair by pair are cut on the planes through those meetings; others are
/// united from three straight pieces. Empty when the ends are no wye.
Body wye(const Limbs& limbs, const Point& meet, int detail);

}  // namespace solid
