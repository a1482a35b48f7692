#include "solid/chain.h"

#include <algorithm>
#include <utility>

#include "solid/convexity.h"

namespace solid {
namespace {

constexpr double nearestEnds = 1e-9;

Vector areaOf(const std::vector<Point>& points) {
  Vector sum;
  for (size_t i = 1; i + 1 < points.size(); ++i) {
    sum += (points[i] - points[0]).crossProduct(points[i + 1] - points[0]);
  }
  return sum;
}

Point middle(const std::vector<Point>& points) {
  Vector sum;
  for (const Point& p : points) sum += p - points[0];
  return points[0] + sum / static_cast<double>(points.size());
}

}  // namespace

/// A ring's vertices in the order in which a hull is walked: to the left about the way from one ring to the
/// other.
struct Chain::Strand {
  std::vector<Index> vertices;
  std::vector<std::int32_t> quarters;  // of the edge behind each vertex
  Vector normal;                       // of length 1, along the way

  Strand(const Ring& ring, Index first, const Vector& way) {
    const Vector area = areaOf(ring.points);
    const size_t count = ring.points.size();
    const bool reversed = area.dotProduct(way) < 0;
    vertices.reserve(count), quarters.reserve(count);
    for (size_t i = 0; i < count; ++i) {
      vertices.push_back(first + static_cast<Index>(reversed ? count - 1 - i : i));
      quarters.push_back(ring.quarters[reversed ? (2 * count - 2 - i) % count : i]);
    }
    normal = area * ((reversed ? -1 : 1) / area.length());
  }
  size_t size() const { return vertices.size(); }
  Index operator[](size_t i) const { return vertices[i < vertices.size() ? i : i % vertices.size()]; }
};

int Chain::add(Ring ring) {
  const auto first = static_cast<Index>(body_.points.size());
  body_.points.insert(body_.points.end(), ring.points.begin(), ring.points.end());
  rings_.push_back({std::move(ring), first, -1});
  return static_cast<int>(rings_.size()) - 1;
}

void Chain::addFace(std::initializer_list<Index> loop, std::int32_t cell, std::int32_t surface) {
  body_.corners.insert(body_.corners.end(), loop);
  body_.faces.push_back({static_cast<Index>(body_.corners.size()), cell, noCell, surface});
}

/// The second cell at a ring stands in front of the wall of the first.
void Chain::addWall(Placed& placed, std::int32_t cell, const std::vector<Index>& outward) {
  if (placed.wall >= 0) {
    body_.faces[static_cast<size_t>(placed.wall)].front = cell;
    return;
  }
  placed.wall = static_cast<int>(body_.faces.size());
  body_.corners.insert(body_.corners.end(), outward.begin(), outward.end());
  body_.faces.push_back({static_cast<Index>(body_.corners.size()), cell, noCell, flat});
}

namespace {

/// The face with a ring's edge at its foot leans on the vertex of the other ring that has all others behind
/// it.
size_t supporting(const std::vector<Point>& points, Index from, Index to, const std::vector<Index>& others) {
  size_t best = 0;
  for (size_t k = 1; k < others.size(); ++k) {
    const Vector normal = (points[to] - points[from]).crossProduct(points[others[best]] - points[from]);
    if (normal.dotProduct(points[others[k]] - points[from]) > 0) best = k;
  }
  return best;
}

}  // namespace

void Chain::walk(const Strand& a, const Strand& b, std::int32_t cell, std::int32_t surface,
                 double tolerance) {
  const std::vector<Point>& points = body_.points;
  const auto numbered = [&](std::int32_t quarter) {
    return quarter == flat ? flat : surface * quartersOfSurface + quarter;
  };
  /// Of three points, the distance of a fourth above them; a tiny face counts as nothing.
  const auto above = [&](Index p, Index q, Index r, Index s) {
    const Vector normal = (points[q] - points[p]).crossProduct(points[r] - points[p]);
    const double length = normal.length();
    return length > 0 ? normal.dotProduct(points[s] - points[p]) / length : 0;
  };
  size_t i = 0, j = supporting(points, a[0], a[1], b.vertices);
  // Of several vertices in one plane with the edge, the first one along the ring.
  for (size_t back = 0; back < b.size(); ++back) {
    const size_t before = (j + b.size() - 1) % b.size();
    if (above(a[0], a[1], b[j], b[before]) < -tolerance) break;
    j = before;
  }
  const size_t endA = i + a.size(), endB = j + b.size();
  while (i < endA || j < endB) {
    if (i == endA) {
      addFace({a[i], b[j + 1], b[j]}, cell, numbered(b.quarters[j % b.size()]));
      ++j;
      continue;
    }
    const double rise = j == endB ? -1 : above(a[i], a[i + 1], b[j], b[j + 1]);
    const double fall = j == endB ? -1 : above(a[i], b[j + 1], b[j], a[i + 1]);
    if (j < endB && std::abs(rise) <= tolerance && std::abs(fall) <= tolerance) {
      const std::int32_t one = a.quarters[i % a.size()], other = b.quarters[j % b.size()];
      addFace({a[i], a[i + 1], b[j + 1], b[j]}, cell, one == other ? numbered(one) : flat);
      ++i, ++j;
    } else if (rise <= 0) {
      addFace({a[i], a[i + 1], b[j]}, cell, numbered(a.quarters[i % a.size()]));
      ++i;
    } else {
      addFace({a[i], b[j + 1], b[j]}, cell, numbered(b.quarters[j % b.size()]));
      ++j;
    }
  }
}

namespace {

/// A section that the rounding of the piece's length and place swallows.
bool isThin(const std::vector<Point>& points, double tolerance) {
  double around = 0;
  for (size_t i = 0; i < points.size(); ++i) around += points[i].distanceTo(points[(i + 1) % points.size()]);
  return areaOf(points).length() <= tolerance * around;
}

}  // namespace

bool Chain::join(int first, int second, std::int32_t surface) {
  Placed &start = rings_[static_cast<size_t>(first)], &end = rings_[static_cast<size_t>(second)];
  if (start.ring.points.empty() || end.ring.points.empty()) return false;
  std::vector<Point> both = start.ring.points;
  both.insert(both.end(), end.ring.points.begin(), end.ring.points.end());
  const double tolerance = toleranceOf(both);
  const Vector way = middle(end.ring.points) - middle(start.ring.points);
  const Strand a(start.ring, start.first, way), b(end.ring, end.first, way);
  if (!isUsable(a.normal) || !isUsable(b.normal)) return false;
  if (isThin(start.ring.points, tolerance) || isThin(end.ring.points, tolerance)) return false;
  // Neither ring may reach through the other's plane, and each must lie off it somewhere.
  double farA = 0, farB = 0;
  for (const Point& p : end.ring.points) {
    const double distance = (p - start.ring.points[0]).dotProduct(a.normal);
    if (distance < -tolerance) return false;
    farA = std::max(farA, distance);
  }
  for (const Point& p : start.ring.points) {
    const double distance = (end.ring.points[0] - p).dotProduct(b.normal);
    if (distance < -tolerance) return false;
    farB = std::max(farB, distance);
  }
  if (farA <= tolerance || farB <= tolerance) return false;
  const std::int32_t cell = body_.cells++;
  const size_t firstFace = body_.faces.size();
  addWall(start, cell, {a.vertices.rbegin(), a.vertices.rend()});
  addWall(end, cell, b.vertices);
  walk(a, b, cell, surface, tolerance);
  for (const std::vector<std::int32_t>* quarters : {&a.quarters, &b.quarters}) {
    const std::int32_t most = *std::max_element(quarters->begin(), quarters->end());
    if (most != flat) body_.surfaces = std::max(body_.surfaces, surface + 1 + most / quartersOfSurface);
  }
  std::vector<size_t> faces = {static_cast<size_t>(start.wall), static_cast<size_t>(end.wall)};
  for (size_t face = firstFace; face < body_.faces.size(); ++face) {
    if (face != faces[0] && face != faces[1]) faces.push_back(face);
  }
  return isConvexCell(body_, faces, cell, 4 * tolerance);
}

Body transition(const SectionEnd& start, const SectionEnd& end, int detail) {
  if (start.centre.distanceTo(end.centre) < nearestEnds) return {};
  Chain chain;
  const Ring from = ringOf(start, detail), to = ringOf(end, detail);
  if (from.points.empty() || to.points.empty()) return {};
  if (!chain.join(chain.add(from), chain.add(to))) return {};
  Body body = chain.take();
  body.ends = {start.centre, end.centre};
  return body;
}

}  // namespace solid
