#include "host/geometry/ellipse_arc.h"

#include "host/geometry/polynomial.h"
#include "host/geometry/quadrature.h"

namespace host {

double wrapped(double angle) {
  angle = std::fmod(angle, fullTurn);
  return angle < 0 ? angle + fullTurn : angle;
}

EllipseArc EllipseArc::circle(const AcGePoint3d& centre, const AcGeVector3d& normal, double radius,
                              double start, double end) {
  const AcGeMatrix3d plane = AcGeMatrix3d::planeToWorld(normal);
  return {centre, plane.column(0) * radius, plane.column(1) * radius, start, end};
}

bool EllipseArc::reaches(double& t, double tolerance) const {
  double beyond = wrapped(t - start);
  if (beyond > fullTurn - tolerance) beyond -= fullTurn;  // the start itself, missed by rounding
  t = start + beyond;
  return beyond <= end - start + tolerance;
}

bool EllipseArc::isCircular() const {
  const double a = u.length(), b = v.length(), limit = 1e-12 * (a + b);
  return std::abs(a - b) <= limit && std::abs(u.dotProduct(v)) <= limit * (a + b);
}

EllipseArc EllipseArc::alongAxes() const {
  const double shift = 0.5 * std::atan2(2 * u.dotProduct(v), u.lengthSqrd() - v.lengthSqrd());
  const AcGeVector3d first = u * std::cos(shift) + v * std::sin(shift);
  const AcGeVector3d second = v * std::cos(shift) - u * std::sin(shift);
  return {centre, first, second, start - shift, end - shift};
}

namespace {

/// Without the part along a unit vector.
AcGeVector3d across(const AcGeVector3d& v, const AcGeVector3d& unit) { return v - unit * v.dotProduct(unit); }

/// Parameters at which the distance from (x, y) is extreme on an ellipse with the half axes a and b:
/// (b² - a²) sin cos + a x sin - b y cos = 0, a quartic in the tangent of half the parameter.
std::vector<double> footPoints(double a, double b, double x, double y) {
  const double scale = std::max(a, b) > 0 ? std::max(a, b) : 1;
  a /= scale, b /= scale, x /= scale, y /= scale;
  if (std::abs(a - b) <= 1e-13) {
    const double angle = std::atan2(y, x);
    return {angle, angle + fullTurn / 2};
  }
  const double d = b * b - a * a;
  std::vector<double> found = {fullTurn / 2};  // the tangent that isn't finite
  for (const double tangent : realRoots({-b * y, 2 * (d + a * x), 0, 2 * (a * x - d), b * y})) {
    double t = 2 * std::atan(tangent);
    // One step of Newton's takes the rounding of the quartic away.
    const double f = d * std::sin(t) * std::cos(t) + a * x * std::sin(t) - b * y * std::cos(t);
    const double slope = d * std::cos(2 * t) + a * x * std::cos(t) + b * y * std::sin(t);
    if (std::abs(slope) > 1e-9) t -= f / slope;
    found.push_back(t);
  }
  return found;
}

}  // namespace

double EllipseArc::closestParam(const AcGePoint3d& point, const AcGeVector3d* direction, bool extend) const {
  const AcGeVector3d view = direction && !direction->isZeroLength() ? direction->normal() : normal();
  const EllipseArc seen = EllipseArc{centre, across(u, view), across(v, view), start, end}.alongAxes();
  const AcGeVector3d away = across(point - centre, view);
  const double a = seen.u.length(), b = seen.v.length();
  const double x = a > 0 ? away.dotProduct(seen.u) / a : 0;
  // A circle that is seen from its edge is a line.
  const bool isLine = b <= a * 1e-12;
  const double y = isLine ? 0 : away.dotProduct(seen.v) / b;
  std::vector<double> candidates = isLine ? std::vector<double>{} : footPoints(a, b, x, y);
  if (isLine && a > 0) {
    const double angle = std::acos(std::clamp(x / a, -1.0, 1.0));
    candidates = {angle, -angle};
  }
  double best = seen.start, bestDistance = 1e300;
  const auto consider = [&](double t) {
    const AcGeVector3d off = away - seen.u * std::cos(t) - seen.v * std::sin(t);
    if (off.lengthSqrd() < bestDistance) bestDistance = off.lengthSqrd(), best = t;
  };
  for (double t : candidates) {
    if (seen.reaches(t, 0) || extend) consider(t);
  }
  if (!extend) consider(seen.start), consider(seen.end);
  return best + (start - seen.start);
}

double EllipseArc::length(double from, double to) const {
  if (isCircular()) return (to - from) * u.length();
  return integral(from, to, [this](double t) { return derivative(t).length(); });
}

std::vector<double> EllipseArc::extremes(const AcGeVector3d& axis) const {
  const double first = std::atan2(v.dotProduct(axis), u.dotProduct(axis));
  std::vector<double> found;
  for (double t : {first, first + fullTurn / 2}) {
    if (reaches(t, 0)) found.push_back(t);
  }
  return found;
}

}  // namespace host
