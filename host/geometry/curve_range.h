#pragma once

#include <algorithm>

#include "brx/ge_point.h"

namespace host {

/// One rule for the queries of all curves: what lies outside the curve is `eInvalidInput`. Rounding is not
/// outside.

/// False for a parameter or distance outside; one that rounding took over an end is brought back to it.
inline bool within(double& value, double low, double high) {
  const double slack = AcGeContext::gTol.equalPoint() * std::max({1.0, std::abs(low), std::abs(high)});
  if (!(value >= low - slack && value <= high + slack)) return false;
  value = std::clamp(value, low, high);
  return true;
}

/// Whether a point is on the curve, by the curve's nearest point. Points come from calculations, whose
/// rounding grows with the coordinates.
inline bool isOnCurve(const AcGePoint3d& point, const AcGePoint3d& nearest) {
  return point.distanceTo(nearest) <= 1e-6 * std::max(1.0, point.asVector().length());
}

}  // namespace host
