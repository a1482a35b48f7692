#pragma once

#include <algorithm>

#include "brx/ge_point.h"

namespace host {

/// One rule for the questions to all curves: what lies before the start or behind the end is refused, and
/// so is a point that isn't on the curve. Both allow for the rounding of what was calculated on the curve.

/// False when a parameter or distance is out of range; brings one that is there but for rounding into it.
inline bool takeInRange(double& value, double first, double last) {
  const double slack = AcGeContext::gTol.equalPoint() * std::max(1.0, std::abs(last));
  if (!(value >= first - slack && value <= last + slack)) return false;
  value = std::clamp(value, first, std::max(first, last));
  return true;
}

/// `nearest` is the point of the curve that lies nearest to `point`.
inline bool isOnCurve(const AcGePoint3d& nearest, const AcGePoint3d& point) {
  return nearest.distanceTo(point) <= 1e-6 * std::max(1.0, point.asVector().length());
}

}  // namespace host
