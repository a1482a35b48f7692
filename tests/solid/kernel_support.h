#pragma once

#include <cmath>
#include <numbers>
#include <random>
#include <set>

#include "solid/boolean.h"
#include "solid/chain.h"
#include "solid/elbow.h"

/// Words for tests of the kernel.

namespace solid {

inline Vector unit(const Vector& v) { return v / v.length(); }

/// An end in plan: the axis at an angle, the width to its left, the height up.
inline SectionEnd planEnd(const Point& centre, double angle, double width, double height,
                          bool rectangular = true) {
  const Vector along{std::cos(angle), std::sin(angle), 0}, left{-std::sin(angle), std::cos(angle), 0};
  return {centre, rectangular, width, height, {along, left, {0, 0, 1}}};
}

/// Area of the polygon of N facets in a circle.
inline double circleArea(double d, int n = 24) { return n * d * d / 8 * std::sin(2 * std::numbers::pi / n); }
inline double sectionArea(double w, double h, bool rectangular) {
  if (rectangular) return w * h;
  const double least = std::min(w, h);
  return circleArea(least) + (std::max(w, h) - least) * least;
}

/// Vertices - edges + faces of the boundary: 2 for each shell without holes.
inline int eulerNumber(const Body& body) {
  std::set<Index> vertices;
  std::set<std::pair<Index, Index>> edges;
  int faces = 0;
  for (size_t face = 0; face < body.faces.size(); ++face) {
    if (!body.isBoundary(face)) continue;
    ++faces;
    const auto loop = body.loop(face);
    for (size_t i = 0; i < loop.size(); ++i) {
      const Index a = loop[i], b = loop[(i + 1) % loop.size()];
      vertices.insert(a);
      edges.insert({std::min(a, b), std::max(a, b)});
    }
  }
  return static_cast<int>(vertices.size()) - static_cast<int>(edges.size()) + faces;
}

/// Numbers for random shapes; the same in every run.
class Dice {
 public:
  explicit Dice(unsigned seed) : engine_(seed) {}
  double between(double low, double high) { return std::uniform_real_distribution<>(low, high)(engine_); }
  double size() { return std::pow(10, between(-3, 3)); }
  bool flip() { return between(0, 1) < 0.5; }
  Point place() {
    const double reach = std::pow(10, between(-2, 6));
    return {between(-reach, reach), between(-reach, reach), between(-reach, reach)};
  }
  /// Three axes at right angles.
  void axes(Vector (&made)[3]) {
    made[0] = direction();
    made[1] = unit(made[0].crossProduct(direction()));
    made[2] = made[0].crossProduct(made[1]);
  }
  Vector direction() {
    for (;;) {
      const Vector v{between(-1, 1), between(-1, 1), between(-1, 1)};
      if (v.length() > 0.1 && v.length() < 1) return unit(v);
    }
  }

 private:
  std::mt19937 engine_;
};

}  // namespace solid
