#include "solid/convexity.h"

namespace solid {
namespace {

/// A face as seen from outside of the cell.
struct Side {
  std::span<const Index> loop;
  bool reversed;
  Vector normal;  // of length 1; none of a tiny face
  size_t size() const { return loop.size(); }
  Index operator[](size_t i) const {
    if (i >= size()) i -= size();
    return loop[reversed ? size() - 1 - i : i];
  }
};

/// The edges by the vertices that they come from, of which each has few.
class EdgeTable {
 public:
  static constexpr std::uint32_t none = ~std::uint32_t{0};
  struct Edge {
    Index to;
    std::uint32_t side, place;  // where in the side's loop it begins
    std::uint32_t next;
  };

  explicit EdgeTable(const std::vector<Side>& sides) {
    Index low = ~Index{0}, high = 0;
    size_t count = 0;
    for (const Side& side : sides) {
      for (const Index corner : side.loop) low = std::min(low, corner), high = std::max(high, corner);
      count += side.size();
    }
    base_ = low;
    first_.assign(high - low + 1, none);
    edges_.reserve(count);
    for (std::uint32_t i = 0; i < sides.size(); ++i) {
      for (std::uint32_t k = 0; k < sides[i].size(); ++k) {
        std::uint32_t& first = first_[sides[i][k] - base_];
        edges_.push_back({sides[i][k + 1], i, k, first});
        first = static_cast<std::uint32_t>(edges_.size() - 1);
      }
    }
  }

  size_t size() const { return edges_.size(); }
  /// Null where there isn't exactly one.
  const Edge* find(Index from, Index to) const {
    const Edge* found = nullptr;
    for (std::uint32_t at = first_[from - base_]; at != none; at = edges_[at].next) {
      if (edges_[at].to != to) continue;
      if (found) return nullptr;
      found = &edges_[at];
    }
    return found;
  }

 private:
  Index base_;
  std::vector<std::uint32_t> first_;
  std::vector<Edge> edges_;
};

std::vector<Side> sidesOf(const Body& body, std::span<const size_t> faces, std::int32_t cell) {
  std::vector<Side> sides;
  sides.reserve(faces.size());
  for (const size_t face : faces) {
    const auto loop = body.loop(face);
    const bool reversed = body.faces[face].front == cell;
    const Vector area = areaVector(body.points, loop);
    const double length = area.length() * (reversed ? -1 : 1);
    sides.push_back({loop, reversed, length != 0 ? area / length : Vector{}});
  }
  return sides;
}

}  // namespace

// In a closed surface that goes round once, edges that don't bend outwards make the whole convex. How far a
// neighbour rises above a face shows at its corners next to the edge, and best at the one across from it.
bool isConvexCell(const Body& body, std::span<const size_t> faces, std::int32_t cell, double tolerance) {
  const std::vector<Side> sides = sidesOf(body, faces, cell);
  const EdgeTable edges(sides);
  const auto rises = [&](const Side& side, const Side& other, size_t place) {
    const Point& origin = body.points[side[0]];
    const auto isAbove = [&](size_t further) {
      return (body.points[other[place + further]] - origin).dotProduct(side.normal) > tolerance;
    };
    const size_t count = other.size();
    return isAbove(2) || (count > 3 && isAbove(count - 1)) || (count > 4 && isAbove(count / 2 + 1));
  };
  // Each edge is looked at from the side that runs it upwards; as many must run downwards.
  size_t pairs = 0;
  for (const Side& side : sides) {
    for (size_t k = 0; k < side.size(); ++k) {
      const Index from = side[k], to = side[k + 1];
      if (from > to) continue;
      const EdgeTable::Edge* const edge = edges.find(to, from);
      if (!edge) return false;
      const Side& other = sides[edge->side];
      if (rises(side, other, edge->place) || rises(other, side, k)) return false;
      ++pairs;
    }
  }
  return 2 * pairs == edges.size();
}

}  // namespace solid
