#pragma once

#include <optional>
#include <string>

#include "brx/ge_point.h"
#include "host/lisp/units.h"

namespace host {

/// What typed coordinates and angles count from.
struct CoordinateRules {
  AcGePoint3d last;
  /// Height of points that are typed without one.
  double elevation = 0;
  lisp::AngleUnits angleUnits = lisp::AngleUnits::degrees;
  /// Direction of the angle zero, radians to the left from +X; angles run to the left unless `clockwise`.
  double angleBase = 0;
  bool clockwise = false;

  /// From the host's variables.
  static CoordinateRules current();
  /// Radians to the left from +X.
  double direction(double angle) const { return angleBase + (clockwise ? -angle : angle); }
};

/// "x,y", "x,y,z", polar "d<a" and "d<a,z", spherical "d<a<b"; with "@" from the last point, which "@" alone
/// gives; a leading "*" (the world's system) changes nothing. Nothing for any other text.
std::optional<AcGePoint3d> parsePoint(std::wstring_view text, const CoordinateRules& rules);

}  // namespace host
