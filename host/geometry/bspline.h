#pragma once

#include <vector>

#include "brx/ge_point.h"

namespace host {

/// A B-spline: control points, knots (one more than the degree beyond the points) and, where it is
/// rational, weights. Knots rise or stay.
struct BSpline {
  int degree = 3;
  std::vector<double> knots;
  std::vector<AcGePoint3d> points;
  std::vector<double> weights;  // empty for a spline that isn't rational
  int frameSegments = 0;        // lines of the frame that it was made on

  /// Whether the numbers of points, knots and weights fit and the knots rise.
  bool isValid() const;
  double first() const { return knots[static_cast<size_t>(degree)]; }
  double last() const { return knots[points.size()]; }
  /// A parameter beyond the ends counts as the end.
  AcGePoint3d at(double t) const { return evaluate(t, nullptr); }
  AcGePoint3d evaluate(double t, AcGeVector3d* derivative) const;
  /// Parameters where pieces meet, from first to last, each once.
  std::vector<double> spans() const;
};

/// On a frame of points, with knots at equal distances; it begins and ends at the frame's ends, or runs
/// around a closed one. The degree falls where there are too few points.
BSpline uniformSpline(std::vector<AcGePoint3d> frame, int degree, bool closed);

/// The cubic spline through points; its parameter is the length of the chords. It leaves the first and
/// reaches the last in the directions given, or without curvature where they are null; `closed` it runs on to
/// the first smoothly. Not valid for less than two places.
BSpline splineThrough(const std::vector<AcGePoint3d>& points, const AcGeVector3d& start,
                      const AcGeVector3d& end, bool closed);

}  // namespace host
