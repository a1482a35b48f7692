#include "solid/outline.h"

#include <algorithm>
#include <unordered_map>

namespace solid {
namespace {

/// Normals that differ by less belong to one plane.
constexpr double sameNormal = 1e-6;

std::uint64_t directed(Index from, Index to) { return static_cast<std::uint64_t>(from) << 32 | to; }

Vector unitNormal(const std::vector<Point>& points, std::span<const Index> loop) {
  const Vector area = areaVector(points, loop);
  const double length = area.length();
  return length > 0 ? area / length : Vector{};
}

struct Fragment {
  std::vector<Index> loop;
  Vector normal;
  std::int32_t surface;
};

class Joiner {
 public:
  explicit Joiner(const Body& body) : points_(body.points), tolerance_(toleranceOf(body.points)) {
    for (size_t face = 0; face < body.faces.size(); ++face) {
      if (!body.isBoundary(face)) continue;
      const auto loop = body.loop(face);
      fragments_.push_back({{loop.begin(), loop.end()}, unitNormal(points_, loop), body.faces[face].surface});
      own(fragments_.size() - 1);
    }
  }

  void join() {
    for (size_t i = 0; i < fragments_.size(); ++i) {
      while (joinNeighbour(i)) {
      }
    }
  }

  Outline take() {
    dropLooseCorners();
    Outline made;
    std::vector<Index> numbers(points_.size(), ~Index{0});
    for (const Fragment& each : fragments_) {
      if (each.loop.size() < 3) continue;
      for (const Index corner : each.loop) {
        if (numbers[corner] == ~Index{0}) {
          numbers[corner] = static_cast<Index>(made.points.size());
          made.points.push_back(points_[corner]);
        }
        made.corners.push_back(numbers[corner]);
      }
      made.faceEnds.push_back(static_cast<Index>(made.corners.size()));
    }
    return made;
  }

 private:
  void own(size_t fragment) {
    const std::vector<Index>& loop = fragments_[fragment].loop;
    for (size_t i = 0; i < loop.size(); ++i)
      owners_[directed(loop[i], loop[(i + 1) % loop.size()])] = fragment;
  }

  bool areOnePlane(const Fragment& a, const Fragment& b) const {
    return a.surface == b.surface && (a.normal - b.normal).length() < sameNormal &&
           std::all_of(b.loop.begin(), b.loop.end(), [&](Index v) {
             return std::abs((points_[v] - points_[a.loop[0]]).dotProduct(a.normal)) <= 4 * tolerance_;
           });
  }

  bool joinNeighbour(size_t number) {
    const Fragment& own = fragments_[number];
    for (size_t i = 0; i < own.loop.size(); ++i) {
      const Index from = own.loop[i], to = own.loop[(i + 1) % own.loop.size()];
      const auto found = owners_.find(directed(to, from));
      if (found == owners_.end() || found->second == number) continue;
      const size_t other = found->second;
      if (!areOnePlane(own, fragments_[other])) continue;
      std::vector<Index> joined = joinedLoop(own.loop, fragments_[other].loop, from, to);
      if (joined.size() < 3 || !isConvex(joined, own.normal)) continue;
      fragments_[other].loop.clear();
      fragments_[number].loop = std::move(joined);
      this->own(number);
      return true;
    }
    return false;
  }

  /// Both loops without the edges that they share around one of them.
  static std::vector<Index> joinedLoop(std::vector<Index> a, std::vector<Index> b, Index from, Index to) {
    std::rotate(a.begin(), std::find(a.begin(), a.end(), to), a.end());    // to ... from
    std::rotate(b.begin(), std::find(b.begin(), b.end(), from), b.end());  // from ... to
    while (a.size() > 1 && b.size() > 2 && a[a.size() - 2] == b[1]) a.pop_back(), b.erase(b.begin());
    while (a.size() > 2 && b.size() > 1 && a[1] == b[b.size() - 2]) a.erase(a.begin()), b.pop_back();
    if (a.size() + b.size() < 5) return {};
    a.insert(a.end(), b.begin() + 1, b.end() - 1);
    std::vector<Index> sorted = a;
    std::sort(sorted.begin(), sorted.end());
    if (std::adjacent_find(sorted.begin(), sorted.end()) != sorted.end()) return {};
    return a;
  }

  bool isConvex(const std::vector<Index>& loop, const Vector& normal) const {
    for (size_t i = 0; i < loop.size(); ++i) {
      const Point &a = points_[loop[i]], &b = points_[loop[(i + 1) % loop.size()]],
                  &c = points_[loop[(i + 2) % loop.size()]];
      const Vector in = b - a, out = c - b;
      if (in.crossProduct(out).dotProduct(normal) < -tolerance_ * (in.length() + out.length())) return false;
    }
    return true;
  }

  /// A corner with two neighbours in all lies within one edge.
  void dropLooseCorners() {
    std::vector<std::pair<Index, Index>> neighbours(points_.size(), {~Index{0}, ~Index{0}});
    std::vector<char> many(points_.size(), 0);
    const auto note = [&](Index corner, Index neighbour) {
      auto& [one, two] = neighbours[corner];
      if (one == neighbour || two == neighbour) return;
      if (one == ~Index{0})
        one = neighbour;
      else if (two == ~Index{0})
        two = neighbour;
      else
        many[corner] = 1;
    };
    for (const Fragment& each : fragments_) {
      for (size_t i = 0; i < each.loop.size(); ++i) {
        const Index a = each.loop[i], b = each.loop[(i + 1) % each.loop.size()];
        note(a, b), note(b, a);
      }
    }
    const auto isLoose = [&](Index corner) {
      if (many[corner] || neighbours[corner].second == ~Index{0}) return false;
      const Vector in = points_[corner] - points_[neighbours[corner].first],
                   out = points_[neighbours[corner].second] - points_[corner];
      return in.crossProduct(out).length() <= tolerance_ * (in.length() + out.length()) &&
             in.dotProduct(out) > 0;
    };
    for (Fragment& each : fragments_) std::erase_if(each.loop, isLoose);
  }

  const std::vector<Point>& points_;
  double tolerance_;
  std::vector<Fragment> fragments_;
  std::unordered_map<std::uint64_t, size_t> owners_;
};

Outline plainOutline(const Body& body) {
  Outline made;
  made.points = body.points;
  made.corners = body.corners;
  for (const Face& face : body.faces) made.faceEnds.push_back(face.end);
  return made;
}

}  // namespace

Outline outlineOf(const Body& body) {
  if (body.cells == 1 && body.parts.empty()) return plainOutline(body);
  Joiner joiner(body);
  joiner.join();
  return joiner.take();
}

std::vector<Edge> edgesOf(const Body& body) {
  struct Half {
    std::uint64_t key;
    std::size_t face;
    bool turned;
    bool operator<(const Half& o) const { return key != o.key ? key < o.key : turned < o.turned; }
  };
  std::vector<Half> halves;
  std::vector<Vector> normals(body.faces.size());
  for (size_t face = 0; face < body.faces.size(); ++face) {
    if (!body.isBoundary(face)) continue;
    const auto loop = body.loop(face);
    normals[face] = unitNormal(body.points, loop);
    for (size_t i = 0; i < loop.size(); ++i) {
      const Index from = loop[i], to = loop[(i + 1) % loop.size()];
      halves.push_back({directed(std::min(from, to), std::max(from, to)), face, from > to});
    }
  }
  std::sort(halves.begin(), halves.end());
  std::vector<Edge> edges;
  for (size_t i = 0; i < halves.size();) {
    size_t next = i + 1;
    while (next < halves.size() && halves[next].key == halves[i].key) ++next;
    Edge edge;
    edge.from = static_cast<Index>(halves[i].key >> 32), edge.to = static_cast<Index>(halves[i].key);
    edge.left = normals[halves[i].face], edge.right = normals[halves[next - 1].face];
    if (next - i == 2) {
      const std::int32_t a = body.faces[halves[i].face].surface, b = body.faces[halves[i + 1].face].surface;
      const bool sameSurface = a != flat && b != flat && a / quartersOfSurface == b / quartersOfSurface;
      if ((edge.left - edge.right).length() < sameNormal) {
        edge.kind = Edge::hidden;
      } else if (sameSurface) {
        edge.kind = a == b ? Edge::smooth : Edge::quarter;
      }
    }
    edges.push_back(edge);
    i = next;
  }
  return edges;
}

}  // namespace solid
