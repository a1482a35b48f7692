#pragma once

#include "solid/body.h"

/// A body's boundary as others see it: faces without the marks of how the body came to be, and edges.

namespace solid {

/// Convex faces, to the left as seen from outside, of all that the boundary has.
struct Outline {
  std::vector<Point> points;
  std::vector<Index> corners;
  std::vector<Index> faceEnds;
};

/// Fragments in one plane are joined as far as the result is convex; corners that only fragments had are left
/// out.
Outline outlineOf(const Body& body);

/// An edge of the boundary, with the unit normals of its faces.
struct Edge {
  enum Kind : unsigned char {
    hidden,   // within a plane
    smooth,   // within a smooth surface: seen only where the surface turns away
    quarter,  // the same, between two quarters of the surface
    sharp,
  } kind = sharp;
  Index from = 0, to = 0;
  Vector left, right;
};

std::vector<Edge> edgesOf(const Body& body);

}  // namespace solid
