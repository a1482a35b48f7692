#pragma once

#include <unordered_map>

#include "solid/body.h"

namespace solid {

struct Plane {
  Point origin;
  Vector normal;  // of length 1
  double distance(const Point& p) const { return (p - origin).dotProduct(normal); }
};

/// The plane of a face, its normal to the front.
Plane planeOf(const std::vector<Point>& points, std::span<const Index> loop);

/// Bodies while they are being cut. The one primitive splits a cell by a plane: each vertex is classified
/// once, each crossed edge gets one new vertex that all its faces learn of, and the cap is chained from the
/// edges in the plane, so that what was closed stays closed.
class Complex {
 public:
  explicit Complex(double tolerance) : tolerance_(tolerance) {}

  /// Appends the cells of a body; the number of the first one.
  std::int32_t add(const Body& body);
  /// One cell that is a box.
  std::int32_t addBox(const Point& low, const Point& high);
  std::int32_t cellCount() const { return static_cast<std::int32_t>(cells_.size()); }
  bool isAlive(std::int32_t cell) const { return cells_[static_cast<size_t>(cell)].alive; }
  void drop(std::int32_t cell) { cells_[static_cast<size_t>(cell)].alive = false; }
  /// Corners come once a face.
  template <class Visit>
  void forEachCorner(std::int32_t cell, Visit visit) const {
    for (const Index face : cells_[static_cast<size_t>(cell)].faces) {
      for (const Index corner : faces_[face].loop) visit(points_[corner]);
    }
  }

  struct Parts {
    std::int32_t below = noCell, above = noCell;
  };
  /// Splits a cell; the part below keeps its number, and the face between belongs to `surface`. A cell that
  /// can't be split cleanly within the tolerance stays whole, on its larger side.
  Parts split(std::int32_t cell, const Plane& plane, std::int32_t surface);

  /// True when a plane of either side parts the cell from the convex points with these planes. False
  /// doesn't say that they meet.
  bool isApart(std::int32_t cell, std::span<const Plane> planes, const std::vector<Point>& points);

  /// The body of the living cells; the complex is of no more use.
  Body take();

 private:
  struct CellFace {
    std::vector<Index> loop;
    std::int32_t behind, front, surface;
    size_t seen = 0;  // cut edges that the loop knows
  };
  struct Cell {
    std::vector<Index> faces;
    bool alive = true;
  };

  void refresh(CellFace& face);
  signed char side(Index vertex);
  Index cutEdge(Index from, Index to);
  /// Which part of a face lies where; false when the signs round it are not one run each.
  bool divide(const CellFace& face, std::vector<Index>& lower, std::vector<Index>& upper);
  bool chainCap(std::int32_t cell, std::vector<Index>& cap);
  bool isMostlyBelow(const Cell& cell, const Plane& plane) const;
  void commit(std::int32_t cell, std::vector<Index> cap, std::int32_t surface);

  double tolerance_;
  std::vector<Point> points_;
  std::vector<CellFace> faces_;
  std::vector<Cell> cells_;
  std::unordered_map<std::uint64_t, Index> cuts_;
  std::int32_t surfaces_ = 0;

  // Of the split at hand.
  const Plane* plane_ = nullptr;
  std::vector<signed char> sides_;
  std::vector<Index> stamps_;
  Index stamp_ = 0;
  struct Division {
    std::vector<Index> lower, upper;
  };
  std::vector<Division> divisions_;
  std::vector<Index> nextInCap_, capStamps_;
};

}  // namespace solid
