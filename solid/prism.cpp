#include "solid/prism.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace solid {

Body prisms(const PlanShape& shape, const Vector& thickness) {
  Body body;
  const auto count = static_cast<Index>(shape.outline.size());
  body.points = shape.outline;
  for (const Point& p : shape.outline) body.points.push_back(p + thickness);
  const auto addFace = [&](const std::vector<Index>& loop, std::int32_t cell, std::int32_t surface) {
    body.corners.insert(body.corners.end(), loop.begin(), loop.end());
    body.faces.push_back({static_cast<Index>(body.corners.size()), cell, noCell, surface});
  };
  std::map<std::pair<Index, Index>, size_t> walls;  // by the edge as the other piece runs it
  for (const std::vector<Index>& piece : shape.pieces) {
    const std::int32_t cell = body.cells++;
    std::vector<Index> top = piece;
    for (Index& corner : top) corner += count;
    addFace({piece.rbegin(), piece.rend()}, cell, flat);
    addFace(top, cell, flat);
    for (size_t i = 0; i < piece.size(); ++i) {
      const Index from = piece[i], to = piece[(i + 1) % piece.size()];
      if (const auto found = walls.find({from, to}); found != walls.end()) {
        body.faces[found->second].front = cell;
        continue;
      }
      walls[{to, from}] = body.faces.size();
      const bool isOutline = to == (from + 1) % count;
      addFace({from, to, to + count, from + count}, cell, isOutline ? shape.surfaces[from] : flat);
    }
  }
  const auto most = std::max_element(shape.surfaces.begin(), shape.surfaces.end());
  body.surfaces = *most == flat ? 0 : *most / quartersOfSurface + 1;
  return body;
}

namespace {

constexpr double outOfPlane = 1e-6;

struct Flat {
  double x, y;
};
double cross(const Flat& a, const Flat& b, const Flat& c) {
  return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// An outline laid into its plane.
struct Layout {
  std::vector<Flat> points;
  double tolerance;  // of areas

  bool crosses(size_t i, size_t k) const {
    const size_t count = points.size();
    const Flat &a = points[i], &b = points[(i + 1) % count], &c = points[k], &d = points[(k + 1) % count];
    const double abc = cross(a, b, c), abd = cross(a, b, d), cda = cross(c, d, a), cdb = cross(c, d, b);
    const auto apart = [&](double p, double q) {
      return (p > tolerance && q > tolerance) || (p < -tolerance && q < -tolerance);
    };
    if (apart(abc, abd) || apart(cda, cdb)) return false;
    // On one line: only what overlaps along it meets.
    const auto outside = [&](double a0, double a1, double b0, double b1) {
      return std::max(a0, a1) < std::min(b0, b1) || std::max(b0, b1) < std::min(a0, a1);
    };
    return !outside(a.x, b.x, c.x, d.x) && !outside(a.y, b.y, c.y, d.y);
  }
  bool crossesItself() const {
    const size_t count = points.size();
    for (size_t i = 0; i < count; ++i) {
      for (size_t k = i + 2; k < count; ++k) {
        if (i == 0 && k + 1 == count) continue;
        if (crosses(i, k)) return true;
      }
    }
    return false;
  }
  bool holds(Index a, Index b, Index c, Index p) const {
    return cross(points[a], points[b], points[p]) >= -tolerance &&
           cross(points[b], points[c], points[p]) >= -tolerance &&
           cross(points[c], points[a], points[p]) >= -tolerance;
  }
};

/// Cuts ears off until a triangle is left; false when no ear is found.
bool cutEars(const Layout& layout, std::vector<std::vector<Index>>& pieces) {
  std::vector<Index> rest(layout.points.size());
  for (Index i = 0; i < rest.size(); ++i) rest[i] = i;
  while (rest.size() > 3) {
    const size_t count = rest.size();
    size_t ear = count;
    for (size_t i = 0; i < count && ear == count; ++i) {
      const Index a = rest[(i + count - 1) % count], b = rest[i], c = rest[(i + 1) % count];
      if (cross(layout.points[a], layout.points[b], layout.points[c]) <= layout.tolerance) continue;
      const bool blocked = std::any_of(rest.begin(), rest.end(), [&](Index p) {
        return p != a && p != b && p != c && layout.holds(a, b, c, p);
      });
      if (blocked) continue;
      pieces.push_back({a, b, c});
      ear = i;
    }
    if (ear == count) return false;
    rest.erase(rest.begin() + static_cast<std::ptrdiff_t>(ear));
  }
  if (cross(layout.points[rest[0]], layout.points[rest[1]], layout.points[rest[2]]) <= layout.tolerance)
    return false;
  pieces.push_back(rest);
  return true;
}

/// Of the whole outline, about its mean point; zero when it encloses nothing.
Vector outlineArea(const std::vector<Point>& outline) {
  Vector sum;
  for (size_t i = 1; i + 1 < outline.size(); ++i) {
    sum += (outline[i] - outline[0]).crossProduct(outline[i + 1] - outline[0]);
  }
  return sum;
}

/// Without points that repeat the one before them, or lie straight between their neighbours.
void simplify(std::vector<Point>& outline, double size) {
  for (size_t i = 0; i < outline.size() && outline.size() >= 3;) {
    const size_t count = outline.size();
    const Vector in = outline[i] - outline[(i + count - 1) % count],
                 out = outline[(i + 1) % count] - outline[i];
    const bool straight =
        in.length() <= 1e-9 * size || out.length() <= 1e-9 * size ||
        (in.crossProduct(out).length() <= 1e-9 * in.length() * out.length() && in.dotProduct(out) > 0);
    if (!straight) {
      ++i;
    } else {
      outline.erase(outline.begin() + static_cast<std::ptrdiff_t>(i));
      i = 0;
    }
  }
}

}  // namespace

Body skin(std::vector<Point> outline, double thickness) {
  constexpr size_t mostPoints = 4096;
  if (outline.size() < 3 || outline.size() > mostPoints || !(std::abs(thickness) > 0) || !isUsable(thickness))
    return {};
  if (!std::all_of(outline.begin(), outline.end(), [](const Point& p) { return isUsable(p); })) return {};
  double size = 0;
  for (const Point& p : outline) size = std::max(size, p.distanceTo(outline[0]));
  simplify(outline, size);
  if (outline.size() < 3) return {};
  Vector normal = outlineArea(outline);
  const double area = normal.length();
  if (!(area > 1e-9 * size * size)) return {};
  normal = normal / area;
  for (const Point& p : outline) {
    if (std::abs((p - outline[0]).dotProduct(normal)) > outOfPlane * size) return {};
  }
  if (thickness < 0) {
    // The body lies at the other side; to be to the left about it, the outline turns round.
    std::reverse(outline.begin(), outline.end());
    normal = -normal;
    thickness = -thickness;
  }
  Vector x = outline[1] - outline[0];
  x = (x - normal * x.dotProduct(normal));
  x = x / x.length();
  const Vector y = normal.crossProduct(x);
  Layout layout{{}, 1e-12 * size * size};
  for (const Point& p : outline)
    layout.points.push_back({(p - outline[0]).dotProduct(x), (p - outline[0]).dotProduct(y)});
  PlanShape shape;
  if (layout.crossesItself() || !cutEars(layout, shape.pieces)) return {};
  // Flat to the last bit, so that all cells are convex.
  for (Point& p : outline) p = p - normal * (p - outline[0]).dotProduct(normal);
  shape.outline = std::move(outline);
  shape.surfaces.assign(shape.outline.size(), flat);
  return prisms(shape, normal * thickness);
}

}  // namespace solid
