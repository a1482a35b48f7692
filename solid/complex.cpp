#include "solid/complex.h"

#include <algorithm>
#include <array>

namespace solid {
namespace {

std::uint64_t edgeKey(Index a, Index b) {
  return static_cast<std::uint64_t>(std::min(a, b)) << 32 | std::max(a, b);
}

}  // namespace

Plane planeOf(const std::vector<Point>& points, std::span<const Index> loop) {
  const Vector area = areaVector(points, loop);
  const double length = area.length();
  return {points[loop[0]], length > 0 ? area / length : Vector{0, 0, 1}};
}

std::int32_t Complex::add(const Body& body) {
  const auto firstCell = cellCount();
  const auto firstPoint = static_cast<Index>(points_.size());
  points_.insert(points_.end(), body.points.begin(), body.points.end());
  cells_.resize(cells_.size() + static_cast<size_t>(body.cells));
  for (size_t i = 0; i < body.faces.size(); ++i) {
    const Face& from = body.faces[i];
    CellFace face{{}, noCell, noCell, from.surface, cuts_.size()};
    if (face.surface != flat) face.surface += surfaces_ * quartersOfSurface;
    for (const Index corner : body.loop(i)) face.loop.push_back(corner + firstPoint);
    const auto number = static_cast<Index>(faces_.size());
    const auto join = [&](std::int32_t cell, std::int32_t& side) {
      if (cell == noCell) return;
      side = cell + firstCell;
      cells_[static_cast<size_t>(side)].faces.push_back(number);
    };
    join(from.behind, face.behind);
    join(from.front, face.front);
    faces_.push_back(std::move(face));
  }
  surfaces_ += body.surfaces;
  return firstCell;
}

std::int32_t Complex::addBox(const Point& low, const Point& high) {
  Body box;
  for (int i = 0; i < 8; ++i) {
    box.points.push_back({i & 1 ? high.x : low.x, i & 2 ? high.y : low.y, i & 4 ? high.z : low.z});
  }
  box.corners = {0, 2, 3, 1, 4, 5, 7, 6, 0, 1, 5, 4, 2, 6, 7, 3, 0, 4, 6, 2, 1, 3, 7, 5};
  for (Index end = 4; end <= 24; end += 4) box.faces.push_back({end, 0, noCell, flat});
  box.cells = 1;
  return add(box);
}

void Complex::refresh(CellFace& face) {
  if (face.seen == cuts_.size()) return;
  for (size_t i = 0; i < face.loop.size();) {
    const auto found = cuts_.find(edgeKey(face.loop[i], face.loop[(i + 1) % face.loop.size()]));
    if (found == cuts_.end()) {
      ++i;
    } else {
      face.loop.insert(face.loop.begin() + static_cast<std::ptrdiff_t>(i) + 1, found->second);
    }
  }
  face.seen = cuts_.size();
}

signed char Complex::side(Index vertex) {
  if (stamps_[vertex] != stamp_) {
    const double distance = plane_->distance(points_[vertex]);
    sides_[vertex] = static_cast<signed char>(distance > tolerance_ ? 1 : distance < -tolerance_ ? -1 : 0);
    stamps_[vertex] = stamp_;
  }
  return sides_[vertex];
}

Index Complex::cutEdge(Index from, Index to) {
  const std::uint64_t key = edgeKey(from, to);
  if (const auto found = cuts_.find(key); found != cuts_.end()) return found->second;
  const double a = plane_->distance(points_[from]), b = plane_->distance(points_[to]);
  const auto made = static_cast<Index>(points_.size());
  points_.push_back(points_[from] + (points_[to] - points_[from]) * (a / (a - b)));
  sides_.push_back(0);
  stamps_.push_back(stamp_);
  cuts_.emplace(key, made);
  return made;
}

bool Complex::divide(const CellFace& face, std::vector<Index>& lower, std::vector<Index>& upper) {
  lower.clear(), upper.clear();
  bool hasLower = false, hasUpper = false;
  for (const Index vertex : face.loop) {
    hasLower |= side(vertex) < 0;
    hasUpper |= side(vertex) > 0;
  }
  if (!hasUpper || !hasLower) {
    (hasLower ? lower : upper) = face.loop;
    return hasLower || hasUpper;
  }
  int inPlane = 0;
  const size_t count = face.loop.size();
  for (size_t i = 0; i < count; ++i) {
    const Index from = face.loop[i], to = face.loop[(i + 1) % count];
    const signed char here = side(from), there = side(to);
    inPlane += here == 0;
    if (here <= 0) lower.push_back(from);
    if (here >= 0) upper.push_back(from);
    if (here * there < 0) {
      const Index cut = cutEdge(from, to);
      lower.push_back(cut), upper.push_back(cut);
      ++inPlane;
    }
  }
  return inPlane == 2;
}

/// The cap closes the part below: it runs against the edges that lie in the plane.
bool Complex::chainCap(std::int32_t cell, std::vector<Index>& cap) {
  nextInCap_.resize(points_.size());
  capStamps_.resize(points_.size());
  size_t edges = 0;
  Index start = 0;
  const Cell& whole = cells_[static_cast<size_t>(cell)];
  for (size_t i = 0; i < whole.faces.size(); ++i) {
    const std::vector<Index>& lower = divisions_[i].lower;
    const bool outward = faces_[whole.faces[i]].behind == cell;
    for (size_t k = 0; k < lower.size(); ++k) {
      Index from = lower[k], to = lower[(k + 1) % lower.size()];
      if (side(from) != 0 || side(to) != 0) continue;
      if (!outward) std::swap(from, to);
      if (capStamps_[to] == stamp_) return false;
      capStamps_[to] = stamp_, nextInCap_[to] = from;
      start = to;
      ++edges;
    }
  }
  if (edges < 3) return false;
  cap.clear();
  for (Index at = start; cap.size() < edges; at = nextInCap_[at]) {
    if (capStamps_[at] != stamp_ || (at == start && !cap.empty())) return false;
    cap.push_back(at);
  }
  return nextInCap_[cap.back()] == start;
}

bool Complex::isMostlyBelow(const Cell& cell, const Plane& plane) const {
  double sum = 0;
  for (const Index face : cell.faces) {
    for (const Index vertex : faces_[face].loop) sum += plane.distance(points_[vertex]);
  }
  return sum < 0;
}

void Complex::commit(std::int32_t cell, std::vector<Index> cap, std::int32_t surface) {
  const auto above = cellCount();
  cells_.emplace_back();
  std::vector<Index> below, beyond;
  const std::vector<Index> all = std::move(cells_[static_cast<size_t>(cell)].faces);
  for (size_t i = 0; i < all.size(); ++i) {
    const Index number = all[i];
    Division& parts = divisions_[i];
    if (parts.upper.empty()) {
      below.push_back(number);
      continue;
    }
    const auto take = [&](CellFace& face) { (face.behind == cell ? face.behind : face.front) = above; };
    if (parts.lower.empty()) {
      take(faces_[number]);
      beyond.push_back(number);
      continue;
    }
    const auto made = static_cast<Index>(faces_.size());
    faces_[number].loop.swap(parts.lower);
    CellFace upper{std::move(parts.upper), faces_[number].behind, faces_[number].front,
                   faces_[number].surface, cuts_.size()};
    const std::int32_t neighbour = upper.behind == cell ? upper.front : upper.behind;
    if (neighbour != noCell) cells_[static_cast<size_t>(neighbour)].faces.push_back(made);
    take(upper);
    faces_.push_back(std::move(upper));
    below.push_back(number);
    beyond.push_back(made);
  }
  const auto wall = static_cast<Index>(faces_.size());
  faces_.push_back({std::move(cap), cell, above, surface, cuts_.size()});
  below.push_back(wall), beyond.push_back(wall);
  cells_[static_cast<size_t>(cell)].faces = std::move(below);
  cells_[static_cast<size_t>(above)].faces = std::move(beyond);
}

Complex::Parts Complex::split(std::int32_t cell, const Plane& plane, std::int32_t surface) {
  plane_ = &plane;
  ++stamp_;
  sides_.resize(points_.size());
  stamps_.resize(points_.size());
  const std::vector<Index>& faces = cells_[static_cast<size_t>(cell)].faces;
  bool isBelow = false, isAbove = false;
  for (const Index face : faces) {
    refresh(faces_[face]);
    for (const Index vertex : faces_[face].loop) {
      isBelow |= side(vertex) < 0;
      isAbove |= side(vertex) > 0;
    }
  }
  if (!isAbove) return {cell, noCell};
  if (!isBelow) return {noCell, cell};
  if (divisions_.size() < faces.size()) divisions_.resize(faces.size());
  std::vector<Index> cap;
  bool clean = true;
  for (size_t i = 0; i < faces.size() && clean; ++i) {
    clean = divide(faces_[faces[i]], divisions_[i].lower, divisions_[i].upper);
  }
  if (!clean || !chainCap(cell, cap)) {
    return isMostlyBelow(cells_[static_cast<size_t>(cell)], plane) ? Parts{cell, noCell}
                                                                   : Parts{noCell, cell};
  }
  const auto above = cellCount();
  commit(cell, std::move(cap), surface);
  return {cell, above};
}

bool Complex::isApart(std::int32_t cell, std::span<const Plane> planes, const std::vector<Point>& points) {
  const Cell& own = cells_[static_cast<size_t>(cell)];
  const auto isOutside = [&](const Plane& plane) {
    return std::all_of(own.faces.begin(), own.faces.end(), [&](Index face) {
      return std::all_of(faces_[face].loop.begin(), faces_[face].loop.end(),
                         [&](Index v) { return plane.distance(points_[v]) >= -tolerance_; });
    });
  };
  if (std::any_of(planes.begin(), planes.end(), isOutside)) return true;
  return std::any_of(own.faces.begin(), own.faces.end(), [&](Index number) {
    const CellFace& face = faces_[number];
    Plane plane = planeOf(points_, face.loop);
    if (face.behind != cell) plane.normal = -plane.normal;
    return std::all_of(points.begin(), points.end(),
                       [&](const Point& p) { return plane.distance(p) >= -tolerance_; });
  });
}

Body Complex::take() {
  Body made;
  std::vector<std::int32_t> cellNumbers(cells_.size(), noCell);
  for (size_t i = 0; i < cells_.size(); ++i) {
    if (cells_[i].alive) cellNumbers[i] = made.cells++;
  }
  const auto numberOf = [&](std::int32_t cell) {
    return cell == noCell ? noCell : cellNumbers[static_cast<size_t>(cell)];
  };
  constexpr Index unused = ~Index{0};
  std::vector<Index> pointNumbers(points_.size(), unused);
  for (CellFace& face : faces_) {
    std::int32_t behind = numberOf(face.behind), front = numberOf(face.front);
    if (behind == noCell && front == noCell) continue;
    refresh(face);
    if (behind == noCell) {
      std::swap(behind, front);
      std::reverse(face.loop.begin(), face.loop.end());
    }
    for (const Index vertex : face.loop) {
      Index& number = pointNumbers[vertex];
      if (number == unused) {
        number = static_cast<Index>(made.points.size());
        made.points.push_back(points_[vertex]);
      }
      made.corners.push_back(number);
    }
    made.faces.push_back({static_cast<Index>(made.corners.size()), behind, front, face.surface});
  }
  made.surfaces = surfaces_;
  return made;
}

}  // namespace solid
