#include <algorithm>

#include "host/geometry/curve_piece.h"
#include "host/geometry/flatten.h"
#include "host/geometry/polynomial.h"

namespace host {

double sameWithin(const AcGePoint3d& place) {
  constexpr double roundings = 16 * 2.3e-16;  // several operations long
  const double size = std::max({std::abs(place.x), std::abs(place.y), std::abs(place.z)});
  return std::max(AcGeContext::gTol.equalPoint(), roundings * size);
}

namespace {

using Kind = CurvePiece::Kind;

/// The parameter of `place` within the range of the piece, where the piece passes through it.
bool passes(const CurvePiece& piece, const AcGePoint3d& place, double* found = nullptr) {
  const double limit = sameWithin(place);
  double t = 0;
  if (piece.kind == Kind::line) {
    const double size = piece.along.lengthSqrd();
    if (!(size > 0)) return false;
    t = (place - piece.origin).dotProduct(piece.along) / size;
    const double slack = limit / std::sqrt(size);
    if (t < piece.low - slack || t > piece.high + slack) return false;
  } else {
    t = piece.arc.closestParam(place);
  }
  if (found) *found = t;
  return piece.at(t).distanceTo(place) <= limit;
}

/// `t` of a line or conic brought into the range of its piece; false where it lies beyond.
bool within(const CurvePiece& piece, double& t) {
  const double slack = sameWithin(piece.at(t)) / std::max(piece.derivative(t).length(), 1e-300);
  if (piece.kind == Kind::conic) return piece.arc.reaches(t, slack);
  return t >= piece.low - slack && t <= piece.high + slack;
}

/// Nearest points of two lines in space; they meet where those are one.
std::vector<double> lineLine(const CurvePiece& a, const CurvePiece& b) {
  const AcGeVector3d u = a.along, v = b.along, across = u.crossProduct(v), apart = b.origin - a.origin;
  const double size = across.lengthSqrd();
  if (std::sqrt(size) <= AcGeContext::gTol.equalVector() * u.length() * v.length()) return {};
  double s = apart.crossProduct(v).dotProduct(across) / size;
  double t = apart.crossProduct(u).dotProduct(across) / size;
  const AcGePoint3d onA = a.at(s), onB = b.at(t);
  if (onA.distanceTo(onB) > sameWithin(onA) || !within(a, s) || !within(b, t)) return {};
  return {s};
}

/// Coordinates in which a conic is the unit circle of its plane.
class ConicSystem {
 public:
  explicit ConicSystem(const EllipseArc& arc) : centre_(arc.centre) {
    const double uu = arc.u.lengthSqrd(), uv = arc.u.dotProduct(arc.v), vv = arc.v.lengthSqrd();
    const double det = uu * vv - uv * uv;
    first_ = (arc.u * vv - arc.v * uv) * (1 / det), second_ = (arc.v * uu - arc.u * uv) * (1 / det);
    normal_ = arc.normal();
    shortest_ = std::sqrt(std::max(det, 0.0) / std::max(uu, vv));
  }
  AcGeVector2d vector(const AcGeVector3d& v) const { return {v.dotProduct(first_), v.dotProduct(second_)}; }
  AcGeVector2d point(const AcGePoint3d& p) const { return vector(p - centre_); }
  double height(const AcGePoint3d& p) const { return (p - centre_).dotProduct(normal_); }
  const AcGeVector3d& normal() const { return normal_; }
  /// A length, measured by the shorter axis.
  double scaled(double length) const { return length / shortest_; }

 private:
  AcGePoint3d centre_;
  AcGeVector3d first_, second_, normal_;
  double shortest_ = 1;
};

bool isFlat(const EllipseArc& arc) {
  return arc.u.crossProduct(arc.v).length() <= 1e-12 * (arc.u.lengthSqrd() + arc.v.lengthSqrd());
}

/// Where a line passes the unit circle: at half a chord to both sides of the foot of the centre.
std::vector<double> lineConic(const CurvePiece& line, const CurvePiece& conic) {
  const ConicSystem system(conic.arc);
  const double length = line.along.length(), limit = sameWithin(line.origin);
  if (!(length > 0)) return {};
  const double slope = line.along.dotProduct(system.normal()) / length;
  std::vector<double> candidates;
  if (std::abs(slope) > AcGeContext::gTol.equalVector()) {
    candidates = {-system.height(line.origin) / (slope * length)};
  } else if (std::abs(system.height(line.origin)) <= limit) {
    const AcGeVector2d from = system.point(line.origin), step = system.vector(line.along);
    const double size = step.dotProduct(step), foot = -from.dotProduct(step) / size;
    const double off = (from + step * foot).length(), slack = system.scaled(limit);
    if (off > 1 + slack) return {};
    const double half = off >= 1 - slack ? 0 : std::sqrt((1 - off * off) / size);
    candidates = {foot - half};
    if (half > 0) candidates.push_back(foot + half);
  }
  std::erase_if(candidates, [&](double& t) { return !within(line, t) || !passes(conic, line.at(t)); });
  return candidates;
}

/// Where two circles in one plane meet: on the common chord, which stands on the line of centres.
std::vector<AcGePoint3d> circleCircle(const EllipseArc& a, const EllipseArc& b) {
  const AcGeVector3d between = b.centre - a.centre;
  const double d = between.length(), r = a.u.length(), other = b.u.length(), limit = sameWithin(b.centre);
  if (d <= limit || d > r + other + limit || d < std::abs(r - other) - limit) return {};
  const double foot = (d * d + r * r - other * other) / (2 * d);
  const bool tangent = std::abs(d - r - other) <= limit || std::abs(d - std::abs(r - other)) <= limit;
  const double half = tangent ? 0 : std::sqrt(std::max(0.0, r * r - foot * foot));
  const AcGeVector3d along = between * (1 / d), up = a.normal().crossProduct(along);
  std::vector<AcGePoint3d> found = {a.centre + along * foot + up * half};
  if (half > 0) found.push_back(a.centre + along * foot - up * half);
  return found;
}

/// Parameters of `a` on the unit circle of the other conic in the same plane. The condition is a
/// polynomial of degree two in sine and cosine, and so one of degree four in the tangent of half the
/// parameter.
std::vector<double> coplanarConics(const EllipseArc& a, const ConicSystem& system) {
  const AcGeVector2d p = system.point(a.centre), u = system.vector(a.u), v = system.vector(a.v);
  const double cc = u.dotProduct(u), ss = v.dotProduct(v), cs = 2 * u.dotProduct(v);
  const double c = 2 * p.dotProduct(u), s = 2 * p.dotProduct(v), one = p.dotProduct(p) - 1;
  const std::vector<double> quartic = {cc + c + one, 2 * cs + 2 * s, 4 * ss - 2 * cc + 2 * one,
                                       2 * s - 2 * cs, cc - c + one};
  const double size = cc + ss + std::abs(c) + std::abs(s) + std::abs(one);
  if (std::all_of(quartic.begin(), quartic.end(), [&](double q) { return std::abs(q) <= 1e-12 * size; })) {
    return {};
  }
  std::vector<double> found = {fullTurn / 2};  // the tangent that isn't finite
  for (const double z : realRoots(quartic)) {
    double t = 2 * std::atan(z);
    // A step of Newton's takes the rounding of the quartic away, but for roots that touch.
    const AcGeVector2d place = p + u * std::cos(t) + v * std::sin(t);
    const AcGeVector2d rise = v * std::cos(t) - u * std::sin(t);
    const double slope = 2 * place.dotProduct(rise);
    if (std::abs(slope) > 1e-6 * size) t -= (place.dotProduct(place) - 1) / slope;
    found.push_back(t);
  }
  return found;
}

/// Parameters of `a` in the plane of the other: the height above it is p cos t + q sin t + h.
std::vector<double> conicPlane(const EllipseArc& a, const ConicSystem& system) {
  const double p = a.u.dotProduct(system.normal()), q = a.v.dotProduct(system.normal());
  const double h = system.height(a.centre), size = std::hypot(p, q), limit = sameWithin(a.centre);
  if (std::abs(h) > size + limit) return {};
  const double middle = std::atan2(q, p), half = std::acos(std::clamp(-h / size, -1.0, 1.0));
  return {middle - half, middle + half};
}

/// Where curves touch, rounding makes two near places of one.
std::vector<double> joined(const CurvePiece& a, const CurvePiece& b, std::vector<double> found) {
  constexpr double near = 1e-5;  // the root of a rounding of 1e-10
  std::sort(found.begin(), found.end());
  for (size_t i = 1; i < found.size();) {
    const double middle = (found[i - 1] + found[i]) / 2;
    if (found[i] - found[i - 1] < near && passes(b, a.at(middle))) {
      found[i - 1] = middle;
      found.erase(found.begin() + static_cast<long>(i));
    } else {
      ++i;
    }
  }
  return found;
}

std::vector<double> conicConic(const CurvePiece& a, const CurvePiece& b) {
  const ConicSystem system(b.arc);
  const double limit = sameWithin(a.arc.centre);
  const bool parallel = a.arc.normal().crossProduct(system.normal()).length() <= 1e-9;
  if (parallel && std::abs(system.height(a.arc.centre)) > limit) return {};
  std::vector<double> candidates;
  if (parallel && a.arc.isCircular() && b.arc.isCircular()) {
    for (const AcGePoint3d& place : circleCircle(a.arc, b.arc)) {
      candidates.push_back(a.arc.closestParam(place, nullptr, true));
    }
  } else {
    candidates = parallel ? coplanarConics(a.arc, system) : conicPlane(a.arc, system);
  }
  std::erase_if(candidates, [&](double& t) { return !within(a, t) || !passes(b, a.at(t)); });
  return joined(a, b, std::move(candidates));
}

/// Newton's steps to where two curves in space are nearest to each other, from a near place.
bool refine(const CurvePiece& a, const CurvePiece& b, double& s, double& t) {
  for (int step = 0; step < 40; ++step) {
    const AcGeVector3d apart = b.at(t) - a.at(s), u = a.derivative(s), v = b.derivative(t);
    const double uu = u.lengthSqrd(), uv = u.dotProduct(v), vv = v.lengthSqrd(), det = uu * vv - uv * uv;
    if (!(det > 1e-24 * uu * vv)) break;
    const double du = apart.dotProduct(u), dv = apart.dotProduct(v);
    const double moveS = (du * vv - dv * uv) / det, moveT = (du * uv - dv * uu) / det;
    s += moveS, t += moveT;
    if (a.kind == Kind::spline) s = std::clamp(s, a.low, a.high);
    if (b.kind == Kind::spline) t = std::clamp(t, b.low, b.high);
    if (std::abs(moveS) * std::sqrt(uu) + std::abs(moveT) * std::sqrt(vv) < 1e-14) break;
  }
  const AcGePoint3d place = a.at(s);
  // Converging is to rounding where the curves cross; where they touch it ends earlier.
  return place.distanceTo(b.at(t)) <= 10 * sameWithin(place) && (a.kind == Kind::spline || within(a, s)) &&
         (b.kind == Kind::spline || within(b, t));
}

/// Chords of a curve with the parameters of their ends.
struct Chord {
  double from, to;
  AcGePoint3d start, end;
};
std::vector<Chord> chordsOf(const CurvePiece& piece) {
  std::vector<double> stops = {piece.low, piece.high};
  int count = 64;
  if (piece.kind == Kind::line) {
    constexpr double far = 1e6;  // of its own length, for lines that go on without end
    stops = {std::max(piece.low, -far), std::min(piece.high, far)}, count = 1;
  }
  if (piece.kind == Kind::spline) stops = piece.spline.spans(), count = 8 * piece.spline.degree;
  std::vector<Chord> chords;
  for (size_t i = 0; i + 1 < stops.size(); ++i) {
    for (int k = 0; k < count; ++k) {
      const double from = stops[i] + (stops[i + 1] - stops[i]) * k / count;
      const double to = stops[i] + (stops[i + 1] - stops[i]) * (k + 1) / count;
      chords.push_back({from, to, piece.at(from), piece.at(to)});
    }
  }
  return chords;
}

/// Chords that pass near each other give the places to start from.
std::vector<double> numeric(const CurvePiece& a, const CurvePiece& b) {
  std::vector<double> found;
  const std::vector<Chord> others = chordsOf(b);
  for (const Chord& x : chordsOf(a)) {
    for (const Chord& y : others) {
      const AcGeVector3d u = x.end - x.start, v = y.end - y.start, apart = y.start - x.start;
      const double uu = u.lengthSqrd(), uv = u.dotProduct(v), vv = v.lengthSqrd(), det = uu * vv - uv * uv;
      if (!(det > 0)) continue;
      const double shareX = (apart.dotProduct(u) * vv - apart.dotProduct(v) * uv) / det;
      const double shareY = (apart.dotProduct(u) * uv - apart.dotProduct(v) * uu) / det;
      if (shareX < -0.5 || shareX > 1.5 || shareY < -0.5 || shareY > 1.5) continue;
      double s = x.from + (x.to - x.from) * std::clamp(shareX, 0.0, 1.0);
      double t = y.from + (y.to - y.from) * std::clamp(shareY, 0.0, 1.0);
      if (refine(a, b, s, t)) found.push_back(s);
    }
  }
  return found;
}

/// A conic seen from its edge swings along a line: u cos t + v sin t = w · radius cos(t - phase).
struct Swing {
  AcGeVector3d w;
  double radius = 0, phase = 0;
  explicit Swing(const EllipseArc& arc) {
    w = (arc.u.lengthSqrd() > arc.v.lengthSqrd() ? arc.u : arc.v).normal();
    const double p = arc.u.dotProduct(w), q = arc.v.dotProduct(w);
    radius = std::hypot(p, q), phase = std::atan2(q, p);
  }
  CurvePiece line(const EllipseArc& arc) const {
    return CurvePiece::lineOf(arc.centre - w * radius, arc.centre + w * radius);
  }
  /// Parameters of the conic at a place of that line.
  std::vector<double> params(double share) const {
    const double angle = std::acos(std::clamp(2 * share - 1, -1.0, 1.0));
    return {phase + angle, phase - angle};
  }
};

std::vector<double> meetFlat(const CurvePiece& flat, const CurvePiece& other) {
  const Swing swing(flat.arc);
  std::vector<double> found;
  if (!(swing.radius > 0)) return found;
  for (const double share : meetings(swing.line(flat.arc), other)) {
    for (double t : swing.params(share)) {
      if (within(flat, t)) found.push_back(t);
    }
  }
  return found;
}

}  // namespace

std::vector<double> meetings(const CurvePiece& a, const CurvePiece& b) {
  if (a.kind == Kind::conic && isFlat(a.arc)) return meetFlat(a, b);
  if (b.kind == Kind::conic && isFlat(b.arc)) {
    const Swing swing(b.arc);
    std::vector<double> found = meetings(a, swing.line(b.arc));
    std::erase_if(found, [&](double t) {
      double share = 0;
      if (!passes(swing.line(b.arc), a.at(t), &share)) return true;
      std::vector<double> on = swing.params(share);
      return std::none_of(on.begin(), on.end(), [&](double& each) { return within(b, each); });
    });
    return found;
  }
  if (a.kind == Kind::spline || b.kind == Kind::spline) return numeric(a, b);
  if (a.kind == Kind::line) return b.kind == Kind::line ? lineLine(a, b) : lineConic(a, b);
  if (b.kind == Kind::conic) return conicConic(a, b);
  std::vector<double> found;
  for (const double t : lineConic(b, a)) found.push_back(a.arc.closestParam(b.at(t)));
  return found;
}

}  // namespace host
