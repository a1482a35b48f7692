#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "brx/ge_matrix.h"

/// Bodies: complexes of convex cells that share vertices, edges and faces.

namespace solid {

using Point = AcGePoint3d;
using Vector = AcGeVector3d;
using Index = std::uint32_t;

constexpr std::int32_t noCell = -1;
/// A surface number of faces that stand for themselves. Other numbers name quarters of smooth surfaces:
/// four to a surface, so that the edge between two quarters can be drawn.
constexpr std::int32_t flat = -1;
constexpr std::int32_t quartersOfSurface = 4;

/// A convex loop, to the left as seen from the front. A face at the boundary has nothing in front.
struct Face {
  Index end = 0;  // of its corners
  std::int32_t behind = noCell, front = noCell;
  std::int32_t surface = flat;
};

struct Body {
  std::vector<Point> points;
  std::vector<Index> corners;  // loop after loop
  std::vector<Face> faces;
  std::int32_t cells = 0;
  /// Smooth surfaces in use.
  std::int32_t surfaces = 0;
  /// Centres of the end sections.
  std::vector<Point> ends;
  /// What a union was made of, with the cuts made since: later unions start from these.
  std::vector<Body> parts;

  Index loopBegin(size_t face) const { return face == 0 ? 0 : faces[face - 1].end; }
  std::span<const Index> loop(size_t face) const {
    return std::span(corners).subspan(loopBegin(face), faces[face].end - loopBegin(face));
  }
  bool isBoundary(size_t face) const { return faces[face].front == noCell; }
  bool empty() const { return cells == 0; }
};

struct Measures {
  double volume = 0, area = 0;
  Point centre;
  bool closed = false;
};

/// Volumes count from a vertex of the body, so that they are exact far from the origin too.
Measures measure(const Body& body);
/// Every directed edge of the boundary has its opposite.
bool isClosed(const Body& body);

/// Twice the loop's area along its normal, to the left.
Vector areaVector(const std::vector<Point>& points, std::span<const Index> loop);

/// Distance below which places count as one: the rounding of lengths and coordinates.
double toleranceOf(double extent, double magnitude);
double toleranceOf(const std::vector<Point>& points);

/// True when all numbers are finite and of a size that can be computed with.
bool isUsable(double value);
bool isUsable(const Point& point);
bool isUsable(const Vector& vector);

/// A matrix that mirrors turns the loops round. False, with nothing changed, when it flattens the body or
/// leaves the range of numbers.
bool transform(Body& body, const AcGeMatrix3d& matrix);

}  // namespace solid
