#pragma once

#include <vector>

#include "brx/arrays.h"
#include "brx/ge_matrix.h"

namespace host {

constexpr double fullTurn = 6.283185307179586477;

/// From 0 below a full turn.
double wrapped(double angle);

/// The curve centre + cos t · u + sin t · v from `start` to `end` (at most a full turn beyond), which
/// is a circle where u and v stand square and are as long, and an ellipse otherwise.
struct EllipseArc {
  AcGePoint3d centre;
  AcGeVector3d u, v;
  double start = 0, end = fullTurn;

  static EllipseArc circle(const AcGePoint3d& centre, const AcGeVector3d& normal, double radius,
                           double start = 0, double end = fullTurn);

  AcGePoint3d at(double t) const { return centre + u * std::cos(t) + v * std::sin(t); }
  AcGeVector3d derivative(double t) const { return v * std::cos(t) - u * std::sin(t); }
  AcGeVector3d normal() const { return u.crossProduct(v).normal(); }
  bool isFull() const { return end - start >= fullTurn - 1e-12; }
  /// The same place of the curve as a parameter from `start` on; true where the arc reaches it.
  bool reaches(double& t, double tolerance = 1e-9) const;
  /// Parameter of the nearest point as seen along `direction`, or in space with a null one. Without
  /// `extend` it lies on the arc.
  double closestParam(const AcGePoint3d& point, const AcGeVector3d* direction = nullptr,
                      bool extend = false) const;
  /// From `from` to `to`; for an ellipse by quadrature to rounding.
  double length(double from, double to) const;
  /// Parameters, within the arc, at which the coordinate along `axis` is extreme.
  std::vector<double> extremes(const AcGeVector3d& axis) const;
  EllipseArc transformed(const AcGeMatrix3d& matrix) const {
    return {matrix * centre, matrix * u, matrix * v, start, end};
  }
  /// The same curve with u and v square, u the longer one; parameters are shifted.
  EllipseArc alongAxes() const;
  bool isCircular() const;
};

}  // namespace host
