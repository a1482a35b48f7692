#include "solid/wye.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>

#include "solid/boolean.h"
#include "solid/chain.h"

namespace solid {
namespace {

constexpr double same = 1e-6;
/// Radians, 20 degrees: at a sharper angle the walls meet too far away.
constexpr double sharpest = 0.349;
constexpr std::array<std::array<size_t, 2>, 3> pairsOfLimbs = {{{0, 1}, {0, 2}, {1, 2}}};

bool isSame(double a, double b) { return std::abs(a - b) <= same * std::max(a, b); }
Vector unit(const Vector& v) { return v / v.length(); }

/// Away from the junction.
Vector outward(const Limbs& limbs, size_t limb) {
  return unit(limbs[limb].axes[0]) * (limb == 0 ? -1.0 : 1.0);
}

bool areUsable(const Limbs& limbs) {
  for (const SectionEnd& end : limbs) {
    if (!isUsable(end.centre) || !isUsable(end.width) || !isUsable(end.height)) return false;
    if (!(end.width > 0) || !(end.height > 0)) return false;
    for (const Vector& axis : end.axes) {
      if (!isUsable(axis) || !(axis.lengthSqrd() > 0)) return false;
    }
  }
  return true;
}

bool areParallel(const Vector& a, const Vector& b) { return a.crossProduct(b).length() <= same; }

/// The point of the head's line that is nearest to the tail's.
Point nearestOnHead(const Point& p, const Vector& u, const Point& q, const Vector& v) {
  const Vector between = q - p;
  const double uv = u.dotProduct(v);
  return p + u * ((between.dotProduct(u) - between.dotProduct(v) * uv) / (1 - uv * uv));
}

double missedBy(const Point& p, const SectionEnd& limb) {
  return (p - limb.centre).crossProduct(unit(limb.axes[0])).length();
}

/// Where the limbs meet; nothing when they don't.
std::optional<Point> meetingOf(const Limbs& limbs) {
  const Vector head = outward(limbs, 0), first = outward(limbs, 1), second = outward(limbs, 2);
  for (const auto& [a, b] : {std::pair(head, first), std::pair(head, second), std::pair(first, second)}) {
    if (areParallel(a, b) && a.dotProduct(b) > 0) return std::nullopt;
  }
  const bool firstGoesOn = areParallel(head, first);
  if (firstGoesOn && areParallel(head, second)) return std::nullopt;
  const size_t other = firstGoesOn ? 2 : 1;
  const Point meet = nearestOnHead(limbs[0].centre, head, limbs[other].centre, outward(limbs, other));
  for (const SectionEnd& limb : limbs) {
    if (missedBy(meet, limb) > std::min(limb.width, limb.height) / 2) return std::nullopt;
  }
  return isUsable(meet) ? std::optional(meet) : std::nullopt;
}

/// The plane of the three axes, when there is one.
std::optional<Vector> planeOfAxes(const Limbs& limbs) {
  const Vector head = outward(limbs, 0), first = outward(limbs, 1), second = outward(limbs, 2);
  Vector normal = head.crossProduct(first);
  if (normal.length() <= same) normal = head.crossProduct(second);
  normal = unit(normal);
  const auto lies = [&](const Vector& v) { return std::abs(v.dotProduct(normal)) <= same; };
  return lies(first) && lies(second) ? std::optional(normal) : std::nullopt;
}

/// How far from the junction the walls of two limbs meet, on the side where their angle is `angle`: along the
/// first one.
double wallMeeting(double size, double other, double angle) {
  return (size * std::cos(angle) + other) / (2 * std::sin(angle));
}

struct Layout {
  Vector normal;
  std::array<double, 3> sizes;                 // in the plane
  std::array<std::optional<Plane>, 3> planes;  // of pairs, the normal to the pair's second limb
  std::array<Point, 3> inner;
  std::array<double, 3> reach{};  // how far the cuts go along each limb
};

/// Cuts of limbs that lie in one plane, are of one size across it and whose walls meet pair by pair.
std::optional<Layout> layoutOf(const Limbs& limbs, const Point& meet) {
  const auto normal = planeOfAxes(limbs);
  if (!normal) return std::nullopt;
  Layout layout{*normal, {}, {}, {}, {}};
  const double across = sizeAlong(limbs[0], *normal);
  for (size_t i = 0; i < 3; ++i) {
    if (missedBy(meet, limbs[i]) > same * across) return std::nullopt;
    if (!isSame(across, sizeAlong(limbs[i], *normal))) return std::nullopt;
    layout.sizes[i] = sizeAlong(limbs[i], unit(normal->crossProduct(outward(limbs, i))));
    const bool square = unit(limbs[i].axes[1]).crossProduct(*normal).length() <= same ||
                        unit(limbs[i].axes[2]).crossProduct(*normal).length() <= same;
    const bool equal = isSame(limbs[i].width, limbs[0].width) && isSame(limbs[i].height, limbs[0].height);
    if (!square && !(equal && !limbs[i].rectangular && isSame(limbs[i].width, limbs[i].height)))
      return std::nullopt;
    if (!limbs[i].rectangular && !isSame(layout.sizes[i], layout.sizes[0])) return std::nullopt;
  }
  for (size_t pair = 0; pair < 3; ++pair) {
    const auto [i, k] = pairsOfLimbs[pair];
    const Vector a = outward(limbs, i), b = outward(limbs, k);
    const double angle = a.angleTo(b);
    if (angle < sharpest) return std::nullopt;
    if (areParallel(a, b)) {
      if (!isSame(layout.sizes[i], layout.sizes[k])) return std::nullopt;
      layout.inner[pair] = meet + unit(layout.normal.crossProduct(a)) * (layout.sizes[i] / 2);
      layout.planes[pair] = Plane{meet, unit(b - a)};
      continue;
    }
    const double along = wallMeeting(layout.sizes[i], layout.sizes[k], angle);
    const double back = wallMeeting(layout.sizes[k], layout.sizes[i], angle);
    const Vector side = unit(b - a * a.dotProduct(b));
    const Vector toInner = a * along + side * (layout.sizes[i] / 2);
    layout.inner[pair] = meet + toInner;
    Vector across2 = unit(toInner.crossProduct(layout.normal));
    if (across2.dotProduct(b - a) < 0) across2 = -across2;
    layout.planes[pair] = Plane{meet, across2};
    layout.reach[i] = std::max(layout.reach[i], std::abs(along));
    layout.reach[k] = std::max(layout.reach[k], std::abs(back));
  }
  return layout;
}

/// Of limbs that are united from straight pieces: each must come out of the others.
std::array<double, 3> reachOfUnion(const Limbs& limbs) {
  std::array<double, 3> reach{};
  for (const auto& [i, k] : pairsOfLimbs) {
    const double sine = std::sin(outward(limbs, i).angleTo(outward(limbs, k)));
    const double a = std::hypot(limbs[i].width, limbs[i].height),
                 b = std::hypot(limbs[k].width, limbs[k].height);
    const double least = std::max(sine, std::sin(sharpest));
    if (outward(limbs, i).dotProduct(outward(limbs, k)) < 0 && sine < same) continue;
    reach[i] = std::max(reach[i], (a + b) / 2 / least);
    reach[k] = std::max(reach[k], (a + b) / 2 / least);
  }
  return reach;
}

void fillCorners(const SectionEnd& end, const Point& meet, std::array<Point, 8>& corners) {
  constexpr double w[] = {-0.5, 0.5, 0.5, -0.5}, h[] = {-0.5, -0.5, 0.5, 0.5};
  const Vector along = unit(end.axes[0]);
  const Vector way = along * (meet - end.centre).dotProduct(along);
  for (size_t i = 0; i < 4; ++i) {
    corners[i] = end.centre + end.axes[1] * (w[i] * end.width) + end.axes[2] * (h[i] * end.height);
    corners[i + 4] = corners[i] + way;
  }
}

}  // namespace

bool prepareWye(Limbs& limbs, double collar, Junction& junction) {
  if (!isUsable(collar) || collar < 0 || !areUsable(limbs)) return false;
  const auto meet = meetingOf(limbs);
  if (!meet) return false;
  const auto layout = layoutOf(limbs, *meet);
  const std::array<double, 3> reach = layout ? layout->reach : reachOfUnion(limbs);
  Limbs moved = limbs;
  for (size_t i = 0; i < 3; ++i) {
    const Vector away = outward(limbs, i);
    const double at = (*meet - limbs[i].centre).dotProduct(away);
    moved[i].centre = limbs[i].centre + away * (at + reach[i] + std::max(collar, same * limbs[i].width));
    if (!isUsable(moved[i].centre)) return false;
  }
  junction.meet = *meet;
  for (size_t i = 0; i < 3; ++i) fillCorners(moved[i], *meet, junction.corners[i]);
  for (size_t pair = 0; pair < 3; ++pair) {
    const auto [i, k] = pairsOfLimbs[pair];
    const Point inner = layout ? layout->inner[pair] : *meet;
    const Vector normal = layout && layout->planes[pair] ? layout->planes[pair]->normal : Vector{};
    junction.pairs[pair] = {*meet,           inner,           *meet - (inner - *meet),
                            moved[i].centre, moved[k].centre, moved[i].centre + normal};
  }
  limbs = moved;
  return true;
}

namespace {

/// From the end of a limb to the junction, in the sense away from it.
SectionEnd atJunction(const SectionEnd& end, const Point& meet) {
  SectionEnd made = end;
  const Vector along = unit(end.axes[0]);
  made.centre = end.centre + along * (meet - end.centre).dotProduct(along);
  return made;
}

/// Puts bodies into one: vertices nearer than the tolerance are one, and two faces on the same vertices are a
/// wall.
bool weld(const std::vector<Body>& bodies, double tolerance, Body& result) {
  Body made;
  std::map<std::vector<Index>, size_t> faces;
  for (const Body& body : bodies) {
    std::vector<Index> numbers;
    const size_t known = made.points.size();
    for (const Point& p : body.points) {
      const auto begin = made.points.begin(), end = begin + static_cast<std::ptrdiff_t>(known);
      const auto found =
          std::find_if(begin, end, [&](const Point& q) { return p.distanceTo(q) <= tolerance; });
      numbers.push_back(static_cast<Index>(found == end ? made.points.size() : found - begin));
      if (found == end) made.points.push_back(p);
    }
    for (size_t face = 0; face < body.faces.size(); ++face) {
      std::vector<Index> loop;
      for (const Index corner : body.loop(face)) loop.push_back(numbers[corner]);
      std::vector<Index> key = loop;
      std::sort(key.begin(), key.end());
      if (const auto twin = faces.find(key); twin != faces.end()) {
        made.faces[twin->second].front = made.cells;
        continue;
      }
      faces[key] = made.faces.size();
      made.corners.insert(made.corners.end(), loop.begin(), loop.end());
      std::int32_t surface = body.faces[face].surface;
      if (surface != flat) surface += made.surfaces * quartersOfSurface;
      made.faces.push_back({static_cast<Index>(made.corners.size()), made.cells, noCell, surface});
    }
    made.cells += body.cells;
    made.surfaces += body.surfaces;
  }
  if (!isClosed(made)) return false;
  result = std::move(made);
  return true;
}

/// Each limb cut by the planes to the other two. The three must share walls, else it isn't this kind of wye.
bool cutLimbs(const Limbs& limbs, const Layout& layout, const Point& meet, int detail, Body& result) {
  std::vector<Body> bodies;
  double size = 0;
  for (size_t i = 0; i < 3; ++i) {
    SectionEnd far = atJunction(limbs[i], meet);
    far.centre = far.centre - outward(limbs, i) * (layout.reach[i] + layout.sizes[i]);
    Body limb = transition(limbs[i], far, detail);
    for (size_t pair = 0; pair < 3 && !limb.empty(); ++pair) {
      if (pairsOfLimbs[pair][0] != i && pairsOfLimbs[pair][1] != i) continue;
      Plane plane = *layout.planes[pair];
      if (pairsOfLimbs[pair][1] == i) plane.normal = -plane.normal;
      cutTo(limb, plane);
    }
    if (limb.empty()) return false;
    size = std::max({size, limbs[i].width, limbs[i].height, limbs[i].centre.distanceTo(meet)});
    bodies.push_back(std::move(limb));
  }
  const double magnitude = std::max({std::abs(meet.x), std::abs(meet.y), std::abs(meet.z)});
  if (!weld(bodies, 100 * toleranceOf(size, magnitude), result)) return false;
  const auto walls = std::count_if(result.faces.begin(), result.faces.end(),
                                   [](const Face& f) { return f.front != noCell; });
  return walls == 3;
}

}  // namespace

Body wye(const Limbs& limbs, const Point& meet, int detail) {
  if (!areUsable(limbs) || !isUsable(meet) || !meetingOf(limbs)) return {};
  Body result;
  const auto layout = layoutOf(limbs, meet);
  const std::vector<Point> ends = {limbs[0].centre, limbs[1].centre, limbs[2].centre};
  if (layout && cutLimbs(limbs, *layout, meet, detail, result)) {
    result.ends = ends;
    return result;
  }
  std::vector<Body> pieces;
  for (const SectionEnd& each : limbs) {
    pieces.push_back(transition(each, atJunction(each, meet), detail));
    if (pieces.back().empty()) return {};
  }
  unite(pieces);
  if (pieces.size() != 1) return {};
  pieces.front().ends = ends;
  return pieces.front();
}

}  // namespace solid
