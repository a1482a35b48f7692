#include "host/editor/plane_shapes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace {

using host::PlaneArc;
using host::PlaneSegment;
using host::Region;

/// Random shapes, the same in every run.
class Shapes {
 public:
  double number(double low, double high) { return std::uniform_real_distribution(low, high)(engine_); }
  AcGePoint2d point() { return {number(0, 10), number(0, 10)}; }
  PlaneSegment segment() { return {point(), point()}; }
  PlaneArc arc() { return {point(), number(0.1, 5), number(0, 6.28), number(0.1, 6.28)}; }
  /// Corners about a centre, so that no sides cross.
  Region polygon() {
    const AcGePoint2d centre = point();
    std::vector<AcGePoint2d> corners;
    const int count = std::uniform_int_distribution(3, 9)(engine_);
    for (int i = 0; i < count; ++i) {
      const double angle = 6.283185307179586 * i / count, radius = number(0.5, 5);
      corners.push_back({centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)});
    }
    return {Region::Kind::polygon, std::move(corners)};
  }

 private:
  std::mt19937_64 engine_{20261124};
};

/// What many points of the piece say: an independent judgement that errs only near the border.
struct Sampled {
  bool anyInside = false, allInside = true;
};

template <class Piece>
Sampled sample(const Region& region, const Piece& piece) {
  Sampled result;
  constexpr int count = 500;
  for (int i = 0; i <= count; ++i) {
    const bool inside = region.contains(pointAt(piece, static_cast<double>(i) / count));
    result.anyInside |= inside;
    result.allInside &= inside;
  }
  return result;
}

/// Points can miss a short stretch beyond the border, but what they find is certain.
template <class Piece>
void compare(const Region& region, const Piece& piece, int& disagreements) {
  const Sampled sampled = sample(region, piece);
  const bool touches = region.touches(piece), holds = region.holds(piece);
  EXPECT_TRUE(touches || !sampled.anyInside);
  EXPECT_TRUE(!holds || sampled.allInside);
  EXPECT_TRUE(!holds || touches);
  disagreements += touches != sampled.anyInside;
  disagreements += holds != sampled.allInside;
}

TEST(PlaneShapes, AgreeWithSamplesOfManyPieces) {
  Shapes shapes;
  int disagreements = 0;
  constexpr int rounds = 3000;
  for (int i = 0; i < rounds; ++i) {
    const Region region = shapes.polygon();
    compare(region, shapes.segment(), disagreements);
    compare(region, shapes.arc(), disagreements);
  }
  // Stretches shorter than the distance of samples are seldom.
  EXPECT_LT(disagreements, rounds / 50);
}

TEST(PlaneShapes, BordersCountAsInside) {
  const Region box = Region::box({0, 0}, {10, 10});
  EXPECT_TRUE(box.holds(PlaneSegment{{0, 0}, {10, 0}}));
  EXPECT_TRUE(box.holds(PlaneArc{{5, 5}, 5, 0, 6.283185307179586}));
  EXPECT_FALSE(box.holds(PlaneArc{{5, 5}, 5.000001, 0, 6.283185307179586}));
  EXPECT_TRUE(box.touches(PlaneSegment{{10, 10}, {20, 10}}));
  EXPECT_FALSE(box.touches(PlaneSegment{{10.000001, 0}, {20, 0}}));
  EXPECT_TRUE(box.touches(PlaneArc{{15, 5}, 5, 0, 6.283185307179586}));
  EXPECT_FALSE(box.touches(PlaneArc{{15, 5}, 5, -1.57, 3.14}));
  // A piece of no length, a box of no size, and coordinates far from the origin
  EXPECT_TRUE(box.touches(PlaneSegment{{5, 5}, {5, 5}}));
  EXPECT_TRUE(Region::box({5, 0}, {5, 0}).touches(PlaneSegment{{0, 0}, {10, 0}}));
  const double far = 1e7;
  EXPECT_TRUE(
      Region::box({far, far}, {far + 10, far + 10}).holds(PlaneSegment{{far, far}, {far + 10, far + 10}}));
}

}  // namespace
