#include "solid/body.h"

#include <algorithm>
#include <cmath>

namespace solid {
namespace {

/// Beyond this, products of three coordinates would be no numbers any more.
constexpr double largest = 1e90;

}  // namespace

Vector areaVector(const std::vector<Point>& points, std::span<const Index> loop) {
  Vector sum;
  const Point& origin = points[loop[0]];
  for (size_t i = 1; i + 1 < loop.size(); ++i) {
    sum += (points[loop[i]] - origin).crossProduct(points[loop[i + 1]] - origin);
  }
  return sum;
}

bool isClosed(const Body& body) {
  std::vector<std::uint64_t> edges, opposites;
  for (size_t face = 0; face < body.faces.size(); ++face) {
    if (!body.isBoundary(face)) continue;
    const auto loop = body.loop(face);
    for (size_t i = 0; i < loop.size(); ++i) {
      const std::uint64_t from = loop[i], to = loop[(i + 1) % loop.size()];
      edges.push_back(from << 32 | to);
      opposites.push_back(to << 32 | from);
    }
  }
  std::sort(edges.begin(), edges.end());
  std::sort(opposites.begin(), opposites.end());
  return !edges.empty() && edges == opposites;
}

Measures measure(const Body& body) {
  Measures found;
  if (body.points.empty()) return found;
  const Point origin = body.points.front();
  Vector moment;
  for (size_t face = 0; face < body.faces.size(); ++face) {
    if (!body.isBoundary(face)) continue;
    const auto loop = body.loop(face);
    found.area += areaVector(body.points, loop).length() / 2;
    const Vector a = body.points[loop[0]] - origin;
    for (size_t i = 1; i + 1 < loop.size(); ++i) {
      const Vector b = body.points[loop[i]] - origin, c = body.points[loop[i + 1]] - origin;
      const double six = a.dotProduct(b.crossProduct(c));
      found.volume += six / 6;
      moment += (a + b + c) * (six / 24);
    }
  }
  found.centre = found.volume != 0 ? origin + moment / found.volume : origin;
  found.closed = isClosed(body);
  return found;
}

double toleranceOf(double extent, double magnitude) { return 1e-9 * extent + 1e-12 * magnitude; }

double toleranceOf(const std::vector<Point>& points) {
  if (points.empty()) return 0;
  Point low = points.front(), high = low;
  for (const Point& p : points) {
    low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
    high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
  }
  const double extent = std::max({high.x - low.x, high.y - low.y, high.z - low.z});
  const double magnitude = std::max({std::abs(low.x), std::abs(low.y), std::abs(low.z), std::abs(high.x),
                                     std::abs(high.y), std::abs(high.z)});
  return toleranceOf(extent, magnitude);
}

bool isUsable(double value) { return std::abs(value) < largest; }
bool isUsable(const Point& p) { return isUsable(p.x) && isUsable(p.y) && isUsable(p.z); }
bool isUsable(const Vector& v) { return isUsable(v.x) && isUsable(v.y) && isUsable(v.z); }

namespace {

bool areUsable(const Body& body) {
  return std::all_of(body.points.begin(), body.points.end(), [](const Point& p) { return isUsable(p); }) &&
         std::all_of(body.parts.begin(), body.parts.end(), [](const Body& part) { return areUsable(part); });
}

void move(Body& body, const AcGeMatrix3d& matrix, bool mirrors) {
  const auto& m = matrix.entry;
  const auto moved = [&m](const Point& p) -> Point {
    return {m[0][0] * p.x + m[0][1] * p.y + m[0][2] * p.z + m[0][3],
            m[1][0] * p.x + m[1][1] * p.y + m[1][2] * p.z + m[1][3],
            m[2][0] * p.x + m[2][1] * p.y + m[2][2] * p.z + m[2][3]};
  };
  for (Point& p : body.points) p = moved(p);
  for (Point& p : body.ends) p = moved(p);
  if (mirrors) {
    for (size_t face = 0; face < body.faces.size(); ++face) {
      const auto begin = body.corners.begin() + body.loopBegin(face);
      std::reverse(begin, body.corners.begin() + body.faces[face].end);
    }
  }
  for (Body& part : body.parts) move(part, matrix, mirrors);
}

double determinant(const AcGeMatrix3d& matrix) {
  const auto column = [&](int i) {
    return Vector{matrix.entry[0][i], matrix.entry[1][i], matrix.entry[2][i]};
  };
  return column(0).dotProduct(column(1).crossProduct(column(2)));
}

}  // namespace

bool transform(Body& body, const AcGeMatrix3d& matrix) {
  const double grows = determinant(matrix);
  if (!isUsable(grows) || grows == 0) return false;
  Body moved = body;
  move(moved, matrix, grows < 0);
  if (!areUsable(moved)) return false;
  body = std::move(moved);
  return true;
}

}  // namespace solid
