#pragma once

#include <optional>
#include <vector>

#include "brx/ge_point.h"

namespace host {

/// Shapes in the plan view, and how they lie to each other.

struct PlaneBox {
  AcGePoint2d low{1e300, 1e300}, high{-1e300, -1e300};
  void add(const AcGePoint2d& point);
  bool contains(const PlaneBox& other) const;
  bool meets(const PlaneBox& other) const;
};

struct PlaneSegment {
  AcGePoint2d from, to;
};
/// Runs to the left from `start`; the sweep is above 0, and at most a full turn.
struct PlaneArc {
  AcGePoint2d centre;
  double radius = 0, start = 0, sweep = 0;
};
/// A filled polygon.
struct PlaneArea {
  std::vector<AcGePoint2d> corners;
};

AcGePoint2d pointAt(const PlaneSegment& piece, double part);
AcGePoint2d pointAt(const PlaneArc& piece, double part);

/// Where a person or program looks for entities: a closed polygon, or an open fence.
class Region {
 public:
  enum class Kind { polygon, fence };
  Region(Kind kind, std::vector<AcGePoint2d> corners);
  static Region box(const AcGePoint2d& a, const AcGePoint2d& b);

  const PlaneBox& bounds() const { return bounds_; }
  /// Inside or on the border; false for a fence.
  bool contains(const AcGePoint2d& point) const;
  /// The piece has a point in the polygon, or on the fence.
  template <class Piece>
  bool touches(const Piece& piece) const;
  bool touches(const PlaneArea& area) const;
  /// No point of the piece lies outside the polygon.
  template <class Piece>
  bool holds(const Piece& piece) const;
  bool holds(const PlaneArea& area) const;

 private:
  template <class Visit>
  void forEachEdge(Visit visit) const;
  /// Parts of the piece, from 0 to 1, at which it meets the border.
  template <class Piece>
  std::vector<double> crossings(const Piece& piece) const;

  Kind kind_;
  std::vector<AcGePoint2d> corners_;
  PlaneBox bounds_;
  double tolerance_ = 0;
};

extern template bool Region::touches(const PlaneSegment&) const;
extern template bool Region::touches(const PlaneArc&) const;
extern template bool Region::holds(const PlaneSegment&) const;
extern template bool Region::holds(const PlaneArc&) const;

}  // namespace host
