#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "brx/db_block.h"
#include "brx/db_database.h"

namespace {

constexpr double quarter = 1.570796326794896619;

TEST(Intersections, AreExactOnEveryPairOfPieces) {
  const AcDbDatabase drawing;
  const AcDbLine across({-5, 0, 0}, {5, 0, 0}), tangent({-5, 2, 0}, {5, 2, 0}), apart({-5, 3, 0}, {5, 3, 0});
  const AcDbCircle circle({0, 0, 0}, {0, 0, 1}, 2), beside({4, 0, 0}, {0, 0, 1}, 2);
  const AcDbArc upper({0, 0, 0}, 2, 0.1, 2 * quarter - 0.1);
  struct Case {
    const AcDbEntity &a, &b;
    std::vector<AcGePoint3d> points;  // in any order
  };
  const Case cases[] = {
      {across, circle, {{-2, 0, 0}, {2, 0, 0}}},
      {circle, across, {{-2, 0, 0}, {2, 0, 0}}},
      {tangent, circle, {{0, 2, 0}}},
      {apart, circle, {}},
      {circle, beside, {{2, 0, 0}}},
      {across, upper, {}},
      {across, tangent, {}},
  };
  for (const Case& each : cases) {
    AcGePoint3dArray points;
    EXPECT_EQ(each.a.intersectWith(&each.b, AcDb::kOnBothOperands, points), Acad::eOk);
    ASSERT_EQ(points.length(), static_cast<int>(each.points.size())) << &each - cases;
    for (const AcGePoint3d& wanted : each.points) {
      EXPECT_TRUE(std::any_of(points.begin(), points.end(), [&](const AcGePoint3d& p) {
        return p.isEqualTo(wanted);
      })) << &each - cases;
    }
  }
}

TEST(Arcs, AnswerQueriesAndKeepTheirSideWhenMirrored) {
  const AcDbDatabase drawing;
  AcDbArc arc({1, 1, 0}, 2, 0, quarter);
  AcDbExtents extents;
  arc.getGeomExtents(extents);
  EXPECT_TRUE(extents.minPoint().isEqualTo({1, 1, 0}) && extents.maxPoint().isEqualTo({3, 3, 0}));
  double distance = 0;
  EXPECT_EQ(arc.getDistAtPoint({1, 3, 0}, distance), Acad::eOk);
  EXPECT_NEAR(distance, 2 * quarter, 1e-12);
  AcGeMatrix3d mirror;
  mirror(0, 0) = -1;
  EXPECT_EQ(arc.transformBy(mirror), Acad::eOk);
  AcDbExtents mirrored;
  arc.getGeomExtents(mirrored);
  EXPECT_TRUE(mirrored.minPoint().isEqualTo({-3, 1, 0}) && mirrored.maxPoint().isEqualTo({-1, 3, 0}));
}

TEST(Polylines, BulgesAreArcs) {
  const AcDbDatabase drawing;
  AcDbPolyline line;
  line.addVertexAt(0, {0, 0}, 1);
  line.addVertexAt(1, {2, 0});
  line.addVertexAt(2, {2, 3});
  double end = 0, length = 0;
  line.getEndParam(end);
  line.getDistAtParam(end, length);
  EXPECT_NEAR(length, 2 * quarter + 3, 1e-12);
  AcGePoint3d middle;
  line.getPointAtParam(0.5, middle);
  EXPECT_TRUE(middle.isEqualTo({1, -1, 0}));
}

TEST(Matrices, TurnScaleAndInvert) {
  const AcGeMatrix3d turn = AcGeMatrix3d::rotation(quarter, {0, 0, 1}, {1, 0, 0});
  EXPECT_TRUE((turn * AcGePoint3d{2, 0, 5}).isEqualTo({1, 1, 5}));
  const AcGeMatrix3d both = turn * AcGeMatrix3d::scaling(3, {1, 1, 1});
  EXPECT_TRUE((both.inverse() * (both * AcGePoint3d{4, 5, 6})).isEqualTo({4, 5, 6}));
  EXPECT_TRUE((AcGeMatrix3d::planeToWorld({0, 0, -1}) * AcGePoint3d{1, 0, 0}).isEqualTo({-1, 0, 0}));
}

}  // namespace
