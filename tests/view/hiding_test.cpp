#include <gtest/gtest.h>

#include "host/view/hiding.h"

namespace {

using namespace host::view;

/// A level square of side 10 at height 5 in the middle of a plan of 20 by 20, and lines around it.
class HidingTest : public testing::Test {
 protected:
  HidingTest() { list.styles.resize(1); }
  void add(Item::Kind kind, const std::vector<AcGePoint3d>& points) {
    list.items.push_back(
        {kind, 0, static_cast<std::uint32_t>(list.points.size()), static_cast<std::uint32_t>(points.size())});
    list.points.insert(list.points.end(), points.begin(), points.end());
  }
  void addSquare() { add(Item::polygon, {{5, 5, 5}, {15, 5, 5}, {15, 15, 5}, {5, 15, 5}}); }
  DisplayList seen() {
    const auto count = static_cast<std::uint32_t>(list.items.size());
    view.addFaces(list, 0, count);
    DisplayList lines;
    view.seenOf(list, 0, count, lines);
    return lines;
  }
  /// Visible x from each left to its right, in order.
  static std::vector<std::pair<double, double>> spans(const DisplayList& lines) {
    std::vector<std::pair<double, double>> found;
    for (const Item& each : lines.items) {
      found.emplace_back(lines.points[each.first].x, lines.points[each.first + each.count - 1].x);
    }
    return found;
  }

  DisplayList list;
  HiddenView view{Projection::plan(), {0, 0, 20, 20}, 200, 200, Ground::white};
};

constexpr double pixel = 0.1;

TEST_F(HidingTest, CutsWhatLiesBehindAFace) {
  addSquare();
  add(Item::polyline, {{0, 10, 0}, {20, 10, 0}});
  const auto found = spans(seen());
  ASSERT_EQ(found.size(), 2u);
  EXPECT_NEAR(found[0].second, 5, pixel);
  EXPECT_NEAR(found[1].first, 15, pixel);
  EXPECT_EQ(found[1].second, 20);
}

TEST_F(HidingTest, KeepsWhatLiesOnOrBeforeAFace) {
  addSquare();
  add(Item::polyline, {{0, 10, 9}, {20, 10, 9}});
  add(Item::polyline, {{5, 5, 5}, {15, 5, 5}, {15, 15, 5}});  // its own edges
  add(Item::polyline, {{6, 6, 5}, {14, 14, 5}});              // a diagonal in it
  const DisplayList found = seen();
  ASSERT_EQ(found.items.size(), 3u);
  EXPECT_EQ(found.items[1].count, 3u);
}

TEST_F(HidingTest, CutsALineWhereItGoesThroughAFace) {
  addSquare();
  add(Item::polyline, {{0, 10, 0}, {20, 10, 10}});  // at x = 10 it comes up
  const auto found = spans(seen());
  ASSERT_EQ(found.size(), 2u);
  EXPECT_NEAR(found[0].second, 5, pixel);
  EXPECT_NEAR(found[1].first, 10, 3 * pixel);
}

TEST_F(HidingTest, PaintsTheNearestFaceAndNothingElse) {
  addSquare();
  seen();
  const Backdrop found = view.faces();
  const auto at = [&](double x, double y) {
    return (
        *found.pixels)[static_cast<size_t>((20 - y) / 20 * found.height) * static_cast<size_t>(found.width) +
                       static_cast<size_t>(x / 20 * found.width)];
  };
  EXPECT_EQ(at(2, 2), 0u);
  EXPECT_EQ(at(10, 10) >> 24, 0xFFu);
  EXPECT_EQ(at(5.2, 14.8), at(10, 10));
}

}  // namespace
