#pragma once

#include <cstdint>
#include <vector>

#include "brx/db_entity.h"
#include "host/view/view.h"

namespace host::view {

/// Boxes by number, found by where they are, from any side: a tree over boxes that lie near each other, and
/// beside it those that changed since the tree was made. Boxes are kept in single precision around an origin
/// of their own and never smaller than given, so that what meets is always found.
class BoxIndex {
 public:
  /// An empty box takes the number out. Numbers should be dense.
  void set(std::uint32_t number, const AcDbExtents& box);
  AcDbExtents box(std::uint32_t number) const;
  void clear();

  /// Appends, in no order, the numbers whose boxes meet the window of the plane.
  void find(const Projection& projection, const PlaneBox& window, std::vector<std::uint32_t>& found) const;
  /// Around all boxes, as they were given or wider after boxes have shrunk; empty without any.
  AcDbExtents extents() const;

 private:
  struct Box {
    float low[3], high[3];
  };
  struct Node;

  std::vector<Box> boxes_;
};

}  // namespace host::view
