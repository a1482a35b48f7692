#include "solid/boolean.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace solid {
namespace {

/// A union of more pieces than this isn't tried.
constexpr std::int32_t mostCells = 20000;

struct Box {
  Point low{1e300, 1e300, 1e300}, high{-1e300, -1e300, -1e300};
  void add(const Point& p) {
    low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
    high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
  }
  bool meets(const Box& o) const {
    return low.x <= o.high.x && o.low.x <= high.x && low.y <= o.high.y && o.low.y <= high.y &&
           low.z <= o.high.z && o.low.z <= high.z;
  }
};

Box boxOf(const std::vector<Point>& points) {
  Box box;
  for (const Point& p : points) box.add(p);
  return box;
}

/// A convex cell apart from its body.
struct Convex {
  std::vector<Point> points;
  std::vector<Plane> planes;
  std::vector<std::int32_t> surfaces;
  Box box;
};

void appendCells(const Body& body, std::int32_t& surfaces, std::vector<Convex>& cells) {
  std::vector<Convex> made(static_cast<size_t>(body.cells));
  for (size_t i = 0; i < body.faces.size(); ++i) {
    const Face& face = body.faces[i];
    const Plane plane = planeOf(body.points, body.loop(i));
    const std::int32_t surface = face.surface == flat ? flat : face.surface + surfaces * quartersOfSurface;
    const auto add = [&](std::int32_t cell, double sense) {
      if (cell == noCell) return;
      Convex& convex = made[static_cast<size_t>(cell)];
      convex.planes.push_back({plane.origin, plane.normal * sense});
      convex.surfaces.push_back(surface);
      for (const Index corner : body.loop(i)) convex.points.push_back(body.points[corner]);
    };
    add(face.behind, 1);
    add(face.front, -1);
  }
  for (Convex& each : made) each.box = boxOf(each.points);
  surfaces += body.surfaces;
  std::move(made.begin(), made.end(), std::back_inserter(cells));
}

std::vector<Convex> cellsOf(const Body& body) {
  std::vector<Convex> cells;
  std::int32_t surfaces = 0;
  appendCells(body, surfaces, cells);
  return cells;
}

/// What is inside of all planes of a cell of the complex: split off plane by plane; none when nothing is.
std::int32_t splitOff(Complex& complex, std::int32_t cell, const Convex& tool) {
  for (size_t i = 0; i < tool.planes.size() && cell != noCell; ++i) {
    cell = complex.split(cell, tool.planes[i], tool.surfaces[i]).below;
  }
  return cell;
}

double commonTolerance(const Body& a, const Body& b) {
  return std::max(toleranceOf(a.points), toleranceOf(b.points));
}

}  // namespace

void cutTo(Body& body, const Plane& plane) {
  Complex complex(toleranceOf(body.points));
  complex.add(body);
  const std::int32_t count = complex.cellCount();
  for (std::int32_t cell = 0; cell < count; ++cell) {
    const Complex::Parts parts = complex.split(cell, plane, flat);
    if (parts.above != noCell) complex.drop(parts.above);
  }
  std::vector<Body> parts = std::move(body.parts);
  std::vector<Point> ends = std::move(body.ends);
  std::erase_if(ends, [&](const Point& p) { return plane.distance(p) > toleranceOf(body.points); });
  body = complex.take();
  body.ends = std::move(ends);
  for (Body& part : parts) {
    cutTo(part, plane);
    if (!part.empty()) body.parts.push_back(std::move(part));
  }
}

void subtract(Body& body, const Body& tool) {
  std::vector<Convex> cells;
  std::int32_t surfaces = body.surfaces;
  appendCells(tool, surfaces, cells);
  const Convex& convex = cells.front();
  Complex complex(commonTolerance(body, tool));
  complex.add(body);
  bool touched = false;
  const std::int32_t count = complex.cellCount();
  for (std::int32_t cell = 0; cell < count; ++cell) {
    if (complex.isApart(cell, convex.planes, convex.points)) continue;
    const std::int32_t inside = splitOff(complex, cell, convex);
    if (inside == noCell) continue;
    complex.drop(inside);
    touched = true;
  }
  if (!touched) return;
  std::vector<Body> parts = std::move(body.parts);
  std::vector<Point> ends = std::move(body.ends);
  body = complex.take();
  body.surfaces = surfaces;
  body.ends = std::move(ends);
  for (Body& part : parts) {
    subtract(part, tool);
    if (!part.empty()) body.parts.push_back(std::move(part));
  }
}

bool overlap(const Body& a, const Body& b) {
  if (!boxOf(a.points).meets(boxOf(b.points))) return false;
  const double tolerance = commonTolerance(a, b);
  Complex complex(tolerance);
  complex.add(a);
  const std::vector<Convex> tools = cellsOf(b);
  const std::int32_t count = complex.cellCount();
  for (const Convex& tool : tools) {
    for (std::int32_t cell = 0; cell < count; ++cell) {
      if (complex.isApart(cell, tool.planes, tool.points)) continue;
      Complex trial(tolerance);
      trial.add(a);
      if (splitOff(trial, cell, tool) != noCell) return true;
    }
  }
  return false;
}

namespace {

const std::vector<Body>& originals(const Body& body, std::vector<Body>& self) {
  if (!body.parts.empty()) return body.parts;
  self.assign(1, body);
  return self;
}

/// Lays the cells into a void, and drops what of it is left. False, with nothing changed, when that would
/// be too many pieces or nothing whole comes of it.
bool layTogether(const std::vector<const Body*>& bodies, Body& result) {
  std::vector<Convex> cells;
  std::vector<Body> parts, self;
  std::vector<Point> points;
  std::int32_t surfaces = 0;
  for (const Body* body : bodies) {
    for (const Body& each : originals(*body, self)) {
      appendCells(each, surfaces, cells);
      points.insert(points.end(), each.points.begin(), each.points.end());
      parts.push_back(each);
    }
  }
  const Box all = boxOf(points);
  const Vector room = (all.high - all.low) * 0.125 + Vector{1, 1, 1} * (all.high - all.low).length() * 0.125;
  Complex complex(toleranceOf(points));
  complex.addBox(all.low - room, all.high + room);
  std::vector<char> isSolid(1, 0);
  std::vector<Box> boxes(1);  // around the cells, or what they were before they were split
  complex.forEachCorner(0, [&](const Point& p) { boxes[0].add(p); });
  for (const Convex& each : cells) {
    const std::int32_t before = complex.cellCount();
    for (std::int32_t cell = 0; cell < before; ++cell) {
      const auto at = static_cast<size_t>(cell);
      if (isSolid[at] || !boxes[at].meets(each.box)) continue;
      if (complex.isApart(cell, each.planes, each.points)) continue;
      const std::int32_t inside = splitOff(complex, cell, each);
      isSolid.resize(static_cast<size_t>(complex.cellCount()), 0);
      for (auto made = static_cast<std::int32_t>(boxes.size()); made < complex.cellCount(); ++made) {
        Box& box = boxes.emplace_back();
        complex.forEachCorner(made, [&](const Point& p) { box.add(p); });
      }
      if (inside != noCell) isSolid[static_cast<size_t>(inside)] = 1;
      if (complex.cellCount() > mostCells) return false;
    }
  }
  for (std::int32_t cell = 0; cell < complex.cellCount(); ++cell) {
    if (!isSolid[static_cast<size_t>(cell)]) complex.drop(cell);
  }
  result = complex.take();
  result.surfaces = surfaces;
  if (!isClosed(result)) return false;
  for (const Body* body : bodies) result.ends.insert(result.ends.end(), body->ends.begin(), body->ends.end());
  result.parts = std::move(parts);
  return true;
}

}  // namespace

void unite(std::vector<Body>& bodies) {
  std::vector<size_t> group(bodies.size()), order(bodies.size());
  std::iota(group.begin(), group.end(), size_t{0});
  std::iota(order.begin(), order.end(), size_t{0});
  const auto rootOf = [&](size_t i) {
    while (group[i] != i) i = group[i];
    return i;
  };
  std::vector<Box> boxes;
  for (const Body& each : bodies) boxes.push_back(boxOf(each.points));
  // Along X, so that of many bodies only near ones are compared.
  std::sort(order.begin(), order.end(), [&](size_t i, size_t k) { return boxes[i].low.x < boxes[k].low.x; });
  for (size_t at = 0; at < order.size(); ++at) {
    const size_t i = order[at];
    for (size_t next = at + 1; next < order.size() && boxes[order[next]].low.x <= boxes[i].high.x; ++next) {
      const size_t k = order[next];
      if (rootOf(i) == rootOf(k) || !boxes[i].meets(boxes[k]) || !overlap(bodies[i], bodies[k])) continue;
      const size_t first = std::min(rootOf(i), rootOf(k)), second = std::max(rootOf(i), rootOf(k));
      group[second] = first;
    }
  }
  std::vector<std::vector<Body*>> members(bodies.size());
  for (size_t i = 0; i < bodies.size(); ++i) members[rootOf(i)].push_back(&bodies[i]);
  std::vector<Body> united;
  for (const std::vector<Body*>& each : members) {
    Body made;
    if (each.size() > 1 && layTogether({each.begin(), each.end()}, made)) {
      united.push_back(std::move(made));
    } else {
      for (Body* const body : each) united.push_back(std::move(*body));
    }
  }
  bodies = std::move(united);
}

}  // namespace solid
