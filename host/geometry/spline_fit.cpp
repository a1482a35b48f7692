#include <cmath>
#include <span>

#include "host/geometry/bspline.h"

namespace host {
namespace {

std::vector<AcGePoint3d> withoutRepeats(const std::vector<AcGePoint3d>& points) {
  std::vector<AcGePoint3d> kept;
  for (const AcGePoint3d& each : points) {
    if (kept.empty() || !kept.back().isEqualTo(each)) kept.push_back(each);
  }
  return kept;
}

/// Row `below m[i-1] + here m[i] + above m[i+1] = right` of a system for the derivatives at the points.
struct Row {
  double below = 0, here = 1, above = 0;
  AcGeVector3d right;
};

/// By elimination; the rows of splines always have a largest entry in the middle.
std::vector<AcGeVector3d> solved(std::vector<Row> rows) {
  for (size_t i = 1; i < rows.size(); ++i) {
    const double factor = rows[i].below / rows[i - 1].here;
    rows[i].here -= factor * rows[i - 1].above;
    rows[i].right = rows[i].right - rows[i - 1].right * factor;
  }
  std::vector<AcGeVector3d> found(rows.size());
  for (size_t i = rows.size(); i-- > 0;) {
    const AcGeVector3d next = i + 1 < rows.size() ? found[i + 1] : AcGeVector3d{};
    found[i] = (rows[i].right - next * rows[i].above) * (1 / rows[i].here);
  }
  return found;
}

/// Derivatives with respect to the chords' length that make the second ones continuous (the usual cubic
/// spline through points). An end without a direction has no curvature.
std::vector<AcGeVector3d> derivatives(std::span<const AcGePoint3d> points, const AcGeVector3d& start,
                                      const AcGeVector3d& end) {
  const size_t last = points.size() - 1;
  const auto chord = [&](size_t i) { return points[i].distanceTo(points[i + 1]); };
  const auto slope = [&](size_t i) { return (points[i + 1] - points[i]) * (1 / chord(i)); };
  std::vector<Row> rows(points.size());
  rows[0] = start.isZeroLength() ? Row{0, 2, 1, slope(0) * 3} : Row{0, 1, 0, start.normal()};
  for (size_t i = 1; i < last; ++i) {
    const double before = chord(i - 1), behind = chord(i);
    rows[i] = {behind, 2 * (before + behind), before, (slope(i - 1) * behind + slope(i) * before) * 3};
  }
  rows[last] = end.isZeroLength() ? Row{1, 2, 0, slope(last - 1) * 3} : Row{0, 1, 0, end.normal()};
  return solved(std::move(rows));
}

/// One Bézier piece between each two points.
BSpline joined(std::span<const AcGePoint3d> points, std::span<const AcGeVector3d> along) {
  BSpline made;
  made.points.push_back(points[0]);
  made.knots.assign(4, 0);
  double reached = 0;
  for (size_t i = 0; i + 1 < points.size(); ++i) {
    const double chord = points[i].distanceTo(points[i + 1]);
    made.points.push_back(points[i] + along[i] * (chord / 3));
    made.points.push_back(points[i + 1] - along[i + 1] * (chord / 3));
    made.points.push_back(points[i + 1]);
    reached += chord;
    made.knots.insert(made.knots.end(), 3, reached);
  }
  made.knots.push_back(reached);
  return made;
}

/// What a spline does at one point it hardly does some points further: each takes three quarters of it
/// away. So the middle of a way that goes round often enough is closed smoothly.
BSpline closedSpline(std::vector<AcGePoint3d> round) {
  if (round.front().isEqualTo(round.back())) round.pop_back();
  constexpr size_t farEnough = 30;
  const size_t count = round.size(), rounds = farEnough / count + 1;
  std::vector<AcGePoint3d> way;
  for (size_t i = 0; i <= 2 * rounds * count + count; ++i) way.push_back(round[i % count]);
  const auto along = derivatives(way, {}, {});
  const size_t first = rounds * count;
  return joined(std::span(way).subspan(first, count + 1), std::span(along).subspan(first, count + 1));
}

}  // namespace

BSpline splineThrough(const std::vector<AcGePoint3d>& given, const AcGeVector3d& start,
                      const AcGeVector3d& end, bool closed) {
  const std::vector<AcGePoint3d> points = withoutRepeats(given);
  if (points.size() < 2) return {};
  if (closed && points.size() > 2) return closedSpline(points);
  return joined(points, derivatives(points, start, end));
}

}  // namespace host
