#pragma once

#include <cstdint>
#include <vector>

#include "brx/db_entity.h"
#include "host/view/view.h"

namespace host::view {

/// Boxes by number, found by where they are, from any side: a tree over boxes that lie near each other, and
/// beside it those that left their place since the tree was made. Boxes are kept in single precision around
/// an origin of their own and never smaller than given, so that what meets is always found.
class BoxIndex {
 public:
  /// An empty box, or one that isn't finite, takes the number out. Numbers should be dense.
  void set(std::uint32_t number, const AcDbExtents& box);
  /// As it is kept.
  AcDbExtents box(std::uint32_t number) const;
  /// In a view's plane.
  PlaneBox box(std::uint32_t number, const Projection& projection) const;

  /// Appends, in no order, the numbers whose boxes meet the window of the plane.
  void find(const Projection& projection, const PlaneBox& window, std::vector<std::uint32_t>& found) const;
  /// Around all boxes; wider where some have shrunk since the tree was made.
  AcDbExtents extents() const;

 private:
  struct Box {
    float low[3] = {1, 1, 1}, high[3] = {-1, -1, -1};
    bool empty() const { return low[0] > high[0]; }
    void join(const Box& other);
    bool holds(const Box& other) const;
  };
  /// Of a level of the tree, the leaves first: a box over `fan` of the level below.
  using Level = std::vector<Box>;
  class Search;

  Box kept(const AcDbExtents& box) const;
  void build() const;

  std::vector<Box> boxes_;
  AcGePoint3d origin_;
  bool hasOrigin_ = false;
  /// The tree is made when something is looked for.
  mutable std::vector<Level> levels_;
  /// Numbers in the order of the leaves, and the place of each among them.
  mutable std::vector<std::uint32_t> order_, place_;
  /// Outside of the tree.
  mutable std::vector<std::uint32_t> loose_;
};

}  // namespace host::view
