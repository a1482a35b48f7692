#pragma once

#include <vector>

#include "host/geometry/bspline.h"
#include "host/geometry/ellipse_arc.h"

namespace host {

/// One of the simple curves that entities consist of: a line `origin + t · along`, a conic, or a spline,
/// from `low` to `high` in its parameter.
struct CurvePiece {
  enum class Kind { line, conic, spline };
  Kind kind = Kind::line;
  AcGePoint3d origin;
  AcGeVector3d along;
  EllipseArc arc;
  BSpline spline;
  double low = 0, high = 1;

  static CurvePiece lineOf(const AcGePoint3d& from, const AcGePoint3d& to);
  static CurvePiece conicOf(const EllipseArc& arc);
  AcGePoint3d at(double t) const;
  AcGeVector3d derivative(double t) const;
  /// As seen along the unit vector `view`, on the plane through `base`; the parameters are the same.
  CurvePiece projected(const AcGePoint3d& base, const AcGeVector3d& view) const;
};

/// Parameters on `a` at which it meets `b`. Curves that coincide along a way don't meet.
std::vector<double> meetings(const CurvePiece& a, const CurvePiece& b);

/// How near two points at a place must be to be one: the tolerance, and the rounding of coordinates as
/// large as these.
double sameWithin(const AcGePoint3d& place);

}  // namespace host
