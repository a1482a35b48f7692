#include "host/view/box_index.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace host::view {
namespace {

constexpr size_t fan = 16;
/// Places of numbers that the tree doesn't hold.
constexpr std::uint32_t nowhere = 0xFFFFFFFF, amongLoose = 0xFFFFFFFE;
/// Loose boxes are looked at one by one, so that a tree is made again when they are more than this, and more
/// than a share of all.
constexpr size_t fewLoose = 4096, shareOfLoose = 16;
constexpr double farthest = 1e30;

float below(double v) {
  return std::nextafter(static_cast<float>(v), -std::numeric_limits<float>::infinity());
}
float above(double v) {
  return std::nextafter(static_cast<float>(v), std::numeric_limits<float>::infinity());
}

/// Every third bit, of 21.
std::uint64_t spread(std::uint64_t v) {
  v = (v | v << 32) & 0x1F00000000FFFF;
  v = (v | v << 16) & 0x1F0000FF0000FF;
  v = (v | v << 8) & 0x100F00F00F00F00F;
  v = (v | v << 4) & 0x10C30C30C30C30C3;
  return (v | v << 2) & 0x1249249249249249;
}

/// How far a box reaches along an axis.
void reach(const float (&lows)[3], const float (&highs)[3], const AcGeVector3d& axis, double& low,
           double& high) {
  const double parts[] = {axis.x, axis.y, axis.z};
  low = high = 0;
  for (int i = 0; i < 3; ++i) {
    const double first = parts[i] * lows[i], second = parts[i] * highs[i];
    low += std::min(first, second), high += std::max(first, second);
  }
}

bool isNear(const AcGePoint3d& p) {
  return std::abs(p.x) < farthest && std::abs(p.y) < farthest && std::abs(p.z) < farthest;
}

}  // namespace

void BoxIndex::Box::join(const Box& other) {
  if (other.empty()) return;
  if (empty()) {
    *this = other;
    return;
  }
  for (int i = 0; i < 3; ++i)
    low[i] = std::min(low[i], other.low[i]), high[i] = std::max(high[i], other.high[i]);
}
bool BoxIndex::Box::holds(const Box& other) const {
  for (int i = 0; i < 3; ++i) {
    if (!(low[i] <= other.low[i] && other.high[i] <= high[i])) return false;
  }
  return true;
}

BoxIndex::Box BoxIndex::kept(const AcDbExtents& box) const {
  const AcGeVector3d low = box.minPoint() - origin_, high = box.maxPoint() - origin_;
  return {{below(low.x), below(low.y), below(low.z)}, {above(high.x), above(high.y), above(high.z)}};
}

void BoxIndex::set(std::uint32_t number, const AcDbExtents& box) {
  if (number >= boxes_.size()) boxes_.resize(number + 1), place_.resize(number + 1, nowhere);
  Box next;
  if (!box.isEmpty() && isNear(box.minPoint()) && isNear(box.maxPoint())) {
    if (!hasOrigin_) origin_ = box.minPoint(), hasOrigin_ = true;
    next = kept(box);
  }
  boxes_[number] = next;
  std::uint32_t& place = place_[number];
  if (next.empty() || place == amongLoose) return;
  if (place != nowhere) {
    if (levels_.front()[place / fan].holds(next)) return;
    order_[place] = nowhere;
  }
  place = amongLoose;
  loose_.push_back(number);
}

AcDbExtents BoxIndex::box(std::uint32_t number) const {
  AcDbExtents box;
  if (number >= boxes_.size() || boxes_[number].empty()) return box;
  const Box& kept = boxes_[number];
  box.addPoint(origin_ + AcGeVector3d{kept.low[0], kept.low[1], kept.low[2]});
  box.addPoint(origin_ + AcGeVector3d{kept.high[0], kept.high[1], kept.high[2]});
  return box;
}

void BoxIndex::build() const {
  loose_.clear();
  order_.clear();
  levels_.clear();
  Box all;
  for (const Box& each : boxes_) all.join(each);
  float widest = 0;
  for (int i = 0; i < 3 && !all.empty(); ++i) widest = std::max(widest, all.high[i] - all.low[i]);
  const float scale = widest > 0 ? ((1 << 21) - 1) / widest : 0;
  std::vector<std::pair<std::uint64_t, std::uint32_t>> codes;
  for (std::uint32_t number = 0; number < boxes_.size(); ++number) {
    place_[number] = nowhere;
    const Box& box = boxes_[number];
    if (box.empty()) continue;
    std::uint64_t code = 0;
    for (int i = 0; i < 3; ++i) {
      const float middle = (box.low[i] + box.high[i]) / 2 - all.low[i];
      code |= spread(static_cast<std::uint64_t>(std::max(0.0f, middle * scale))) << i;
    }
    codes.emplace_back(code, number);
  }
  std::sort(codes.begin(), codes.end());
  Level leaves((codes.size() + fan - 1) / fan);
  for (const auto& [code, number] : codes) {
    place_[number] = static_cast<std::uint32_t>(order_.size());
    leaves[order_.size() / fan].join(boxes_[number]);
    order_.push_back(number);
  }
  levels_.push_back(std::move(leaves));
  while (levels_.back().size() > 1) {
    const Level& below = levels_.back();
    Level above((below.size() + fan - 1) / fan);
    for (size_t i = 0; i < below.size(); ++i) above[i / fan].join(below[i]);
    levels_.push_back(std::move(above));
  }
}

/// What a window meets, from the origin of the boxes.
class BoxIndex::Search {
 public:
  Search(const BoxIndex& index, const Projection& projection, const PlaneBox& window,
         std::vector<std::uint32_t>& found)
      : index_(index), found_(found) {
    const PlanePoint shift = projection(index.origin_);
    // Far from the world's origin the last digits of differences are lost.
    const double slack =
        (std::abs(index.origin_.x) + std::abs(index.origin_.y) + std::abs(index.origin_.z)) * 1e-15;
    window_ = {window.left - shift.x - slack, window.bottom - shift.y - slack, window.right - shift.x + slack,
               window.top - shift.y + slack};
    axes_[0] = projection.right, axes_[1] = projection.up;
  }

  void run() {
    for (const std::uint32_t number : index_.loose_) take(number);
    if (index_.levels_.empty() || index_.levels_.back().empty()) return;
    visit(index_.levels_.size() - 1, 0);
  }

 private:
  enum class Lies { outside, across, inside };
  Lies lies(const Box& box) const {
    if (box.empty()) return Lies::outside;
    bool inside = true;
    const double lows[] = {window_.left, window_.bottom}, highs[] = {window_.right, window_.top};
    for (int axis = 0; axis < 2; ++axis) {
      double low, high;
      reach(box.low, box.high, axes_[axis], low, high);
      if (low > highs[axis] || high < lows[axis]) return Lies::outside;
      inside = inside && low >= lows[axis] && high <= highs[axis];
    }
    return inside ? Lies::inside : Lies::across;
  }
  void take(std::uint32_t number) {
    if (number != nowhere && lies(index_.boxes_[number]) != Lies::outside) found_.push_back(number);
  }
  void takeAll(size_t level, size_t node) {
    size_t first = node, last = node + 1;
    for (size_t i = 0; i <= level; ++i) first *= fan, last *= fan;
    last = std::min(last, index_.order_.size());
    for (size_t i = first; i < last; ++i) {
      const std::uint32_t number = index_.order_[i];
      if (number != nowhere && !index_.boxes_[number].empty()) found_.push_back(number);
    }
  }
  void visit(size_t level, size_t node) {
    const Lies where = lies(index_.levels_[level][node]);
    if (where == Lies::outside) return;
    if (where == Lies::inside) return takeAll(level, node);
    const size_t first = node * fan;
    if (level == 0) {
      const size_t last = std::min(first + fan, index_.order_.size());
      for (size_t i = first; i < last; ++i) take(index_.order_[i]);
      return;
    }
    const size_t last = std::min(first + fan, index_.levels_[level - 1].size());
    for (size_t i = first; i < last; ++i) visit(level - 1, i);
  }

  const BoxIndex& index_;
  std::vector<std::uint32_t>& found_;
  PlaneBox window_;
  AcGeVector3d axes_[2];
};

void BoxIndex::find(const Projection& projection, const PlaneBox& window,
                    std::vector<std::uint32_t>& found) const {
  if (loose_.size() > std::max(fewLoose, boxes_.size() / shareOfLoose)) build();
  Search(*this, projection, window, found).run();
}

PlaneBox BoxIndex::box(std::uint32_t number, const Projection& projection) const {
  if (number >= boxes_.size() || boxes_[number].empty()) return {};
  const Box& kept = boxes_[number];
  const PlanePoint origin = projection(origin_);
  double low[2], high[2];
  const AcGeVector3d* const axes[] = {&projection.right, &projection.up};
  for (int i = 0; i < 2; ++i) reach(kept.low, kept.high, *axes[i], low[i], high[i]);
  return {origin.x + low[0], origin.y + low[1], origin.x + high[0], origin.y + high[1]};
}

AcDbExtents BoxIndex::extents() const {
  AcDbExtents all;
  const auto add = [&](const Box& box) {
    if (box.empty()) return;
    all.addPoint(origin_ + AcGeVector3d{box.low[0], box.low[1], box.low[2]});
    all.addPoint(origin_ + AcGeVector3d{box.high[0], box.high[1], box.high[2]});
  };
  for (const std::uint32_t number : loose_) add(boxes_[number]);
  if (!levels_.empty() && !levels_.back().empty()) add(levels_.back().front());
  return all;
}

}  // namespace host::view
