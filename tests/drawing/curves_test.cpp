#include <gtest/gtest.h>

#include "brx/db_block.h"
#include "brx/db_database.h"
#include "brx/db_ellipse.h"
#include "brx/db_leader.h"
#include "brx/db_polylines.h"
#include "brx/db_spline.h"
#include "host/geometry/bspline.h"

namespace {

constexpr double quarter = 1.570796326794896619;

AcGePoint3dArray meet(const AcDbEntity& a, const AcDbEntity& b,
                      AcDb::Intersect type = AcDb::kOnBothOperands) {
  AcGePoint3dArray points;
  EXPECT_EQ(a.intersectWith(&b, type, points), Acad::eOk);
  return points;
}

double lengthOf(const AcDbCurve& curve) {
  double end = 0, length = -1;
  curve.getEndParam(end);
  curve.getDistAtParam(end, length);
  return length;
}

std::vector<AcDb2dVertex*> verticesOf(const AcDb2dPolyline& line) {
  std::vector<AcDb2dVertex*> found;
  const std::unique_ptr<AcDbObjectIterator> walk(line.vertexIterator());
  for (; !walk->done(); walk->step()) found.push_back(static_cast<AcDb2dVertex*>(walk->entity()));
  return found;
}

AcDb2dPolyline* zigzag() {
  AcGePoint3dArray points;
  for (const AcGePoint3d& each : {AcGePoint3d{0, 0, 0}, {4, 3, 0}, {8, 0, 0}, {12, 5, 0}})
    points.append(each);
  return new AcDb2dPolyline(AcDb::k2dSimplePoly, points);
}

TEST(Meetings, OfConicsAndSplinesLieOnBoth) {
  const AcDbDatabase drawing;
  const AcDbEllipse wide({0, 0, 0}, {0, 0, 1}, {3, 0, 0}, 1.0 / 3),
      tall({0, 0, 0}, {0, 0, 1}, {0, 3, 0}, 1.0 / 3),
      half({0, 0, 0}, {0, 0, 1}, {3, 0, 0}, 1.0 / 3, 0, 2 * quarter),
      touching({6, 0, 0}, {0, 0, 1}, {3, 0, 0}, 0.5);
  const AcDbCircle circle({0, 0, 0}, {0, 0, 1}, 2), upright({0, 0, 0}, {0, 1, 0}, 2);
  const AcDbLine axis({-9, 0, 0}, {9, 0, 0}), pole({1, 0, -9}, {1, 0, 9});
  AcDbSpline wave;
  AcGeDoubleArray knots;
  for (const double k : {0, 0, 0, 0, 1, 1, 1, 1}) knots.append(k);
  AcGePoint3dArray frame;
  for (const AcGePoint3d& each : {AcGePoint3d{-3, -4, 0}, {-1, 6, 0}, {1, -6, 0}, {3, 4, 0}})
    frame.append(each);
  ASSERT_EQ(wave.setNurbsData(3, knots, frame, AcGeDoubleArray()), Acad::eOk);
  struct Case {
    const AcDbCurve &a, &b;
    int count;
  };
  const Case cases[] = {{wide, tall, 4},     {wide, circle, 4},    {half, circle, 2},  {half, axis, 2},
                        {wide, touching, 1}, {circle, upright, 2}, {upright, pole, 2}, {wave, axis, 3},
                        {axis, wave, 3},     {circle, wave, 2},    {wave, wide, 2},    {wide, wide, 0}};
  for (const Case& each : cases) {
    const AcGePoint3dArray points = meet(each.a, each.b);
    EXPECT_EQ(points.length(), each.count) << &each - cases;
    for (const AcGePoint3d& place : points) {
      AcGePoint3d onA, onB;
      each.a.getClosestPointTo(place, onA), each.b.getClosestPointTo(place, onB);
      EXPECT_LT(onA.distanceTo(place) + onB.distanceTo(place), 1e-8) << &each - cases;
    }
  }
}

TEST(Meetings, ExtendOnlyTheOpenEndsAndLookAlongAPlanesNormal) {
  const AcDbDatabase drawing;
  AcDbPolyline bent;
  bent.addVertexAt(0, {0, 0}), bent.addVertexAt(1, {2, 0}), bent.addVertexAt(2, {2, 2});
  const AcDbLine left({-1, -1, 0}, {-1, 1, 0}), right({3, -1, 0}, {3, 1, 0}), above({1, -1, 5}, {1, 1, 7});
  EXPECT_EQ(meet(bent, left).length(), 0);
  EXPECT_EQ(meet(bent, left, AcDb::kExtendThis).length(), 1);
  EXPECT_EQ(meet(bent, right, AcDb::kExtendThis).length(), 0);
  EXPECT_EQ(meet(above, bent).length(), 0);
  AcGePoint3dArray points;
  above.intersectWith(&bent, AcDb::kOnBothOperands, AcGePlane({0, 0, 0}, {0, 0, 1}), points);
  ASSERT_EQ(points.length(), 1);
  EXPECT_TRUE(points[0].isEqualTo({1, 0, 6}));
  const AcDbCircle upright({1, 0, 0}, {0, 1, 0}, 2);  // from above a line from -1 to 3
  AcGePoint3dArray seen;
  left.intersectWith(&upright, AcDb::kOnBothOperands, AcGePlane({0, 0, 0}, {0, 0, 1}), seen);
  ASSERT_EQ(seen.length(), 1);
  EXPECT_TRUE(seen[0].isEqualTo({-1, 0, 0}));
}

TEST(Ellipses, AreMeasuredAndMoved) {
  const AcDbDatabase drawing;
  AcDbEllipse ellipse({1, 2, 0}, {0, 0, 1}, {5, 0, 0}, 0.6);
  EXPECT_NEAR(lengthOf(ellipse), 25.526998863398, 1e-9);  // 20 E(0.8)
  double area = 0, param = 0, distance = 0;
  ellipse.getArea(area);
  EXPECT_NEAR(area, 15 * 2 * quarter, 1e-12);
  ellipse.getParamAtDist(7, param), ellipse.getDistAtParam(param, distance);
  EXPECT_NEAR(distance, 7, 1e-11);
  AcGePoint3d near;
  ellipse.getClosestPointTo({1, 12, 0}, near);
  EXPECT_TRUE(near.isEqualTo({1, 5, 0}));
  AcGeMatrix3d shear;
  shear(0, 1) = 1;
  ASSERT_EQ(ellipse.transformBy(shear), Acad::eOk);
  ellipse.getArea(area);
  EXPECT_NEAR(area, 15 * 2 * quarter, 1e-10);
  AcDbExtents extents;
  ellipse.getGeomExtents(extents);
  EXPECT_NEAR(extents.maxPoint().x, 3 + std::sqrt(34), 1e-10);
}

TEST(FittedPolylines, HaveArcsThatMeetSmoothlyAndAreStraightenedAgain) {
  const AcDbDatabase drawing;
  const std::unique_ptr<AcDb2dPolyline> line(zigzag());
  const double straight = lengthOf(*line);
  ASSERT_EQ(line->curveFit(), Acad::eOk);
  EXPECT_EQ(verticesOf(*line).size(), 7u);
  double end = 0;
  line->getEndParam(end);
  for (int joint = 1; joint < static_cast<int>(end); ++joint) {
    AcGeVector3d before, behind;
    static_cast<AcDbCurve&>(*line).getFirstDeriv(joint - 1e-9, before);
    static_cast<AcDbCurve&>(*line).getFirstDeriv(joint + 1e-9, behind);
    EXPECT_LT(before.angleTo(behind), 1e-6) << joint;
  }
  ASSERT_EQ(line->straighten(), Acad::eOk);
  EXPECT_EQ(verticesOf(*line).size(), 4u);
  EXPECT_DOUBLE_EQ(lengthOf(*line), straight);
}

TEST(FittedPolylines, FollowASplineWhoseFrameIsKept) {
  const AcDbDatabase drawing;
  const std::unique_ptr<AcDb2dPolyline> line(zigzag());
  ASSERT_EQ(line->splineFit(AcDb::k2dCubicSplinePoly, 8), Acad::eOk);
  EXPECT_EQ(line->polyType(), AcDb::k2dCubicSplinePoly);
  EXPECT_EQ(verticesOf(*line).size(), 4u + 25u);
  AcGePoint3d start, middle, end;
  line->getStartPoint(start), line->getEndPoint(end), line->getPointAtParam(12, middle);
  EXPECT_TRUE(start.isEqualTo({0, 0, 0}) && end.isEqualTo({12, 5, 0}));
  // Four points make one Bézier curve: at its half (0 + 3·4 + 3·8 + 12)/8 and (0 + 9 + 0 + 5)/8.
  EXPECT_TRUE(middle.isEqualTo({6, 1.75, 0}));
  ASSERT_EQ(line->straighten(), Acad::eOk);
  EXPECT_EQ(verticesOf(*line).size(), 4u);
}

TEST(Splines, GoThroughFitPointsAlone) {
  const AcDbDatabase drawing;
  const auto through = [](std::initializer_list<AcGePoint3d> points, bool closed, AcGeVector3d start = {}) {
    return host::splineThrough(points, start, {}, closed);
  };
  // Natural, through (0,0) (1,1) (2,0) with chords of the root of 2: slopes of y at the ends are 3/2 of
  // the chord's, and the height of the first piece's middle is 1/2 + 3/16.
  const host::BSpline natural = through({{0, 0, 0}, {1, 1, 0}, {2, 0, 0}}, false);
  ASSERT_TRUE(natural.isValid());
  const double chord = std::sqrt(2);
  EXPECT_NEAR(natural.last(), 2 * chord, 1e-12);
  EXPECT_TRUE(natural.at(chord).isEqualTo({1, 1, 0}));
  EXPECT_NEAR(natural.at(chord / 2).y, 0.6875, 1e-12);
  AcGeVector3d along;
  through({{0, 0, 0}, {1, 1, 0}, {2, 0, 0}}, false, {0, 5, 0}).evaluate(0, &along);
  EXPECT_TRUE(along.isEqualTo({0, 1, 0}));
  // Around a square it is the same at each corner, and joins itself.
  const host::BSpline ring = through({{1, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, -1, 0}}, true);
  AcGeVector3d first, last, next;
  ring.evaluate(0, &first), ring.evaluate(ring.last(), &last), ring.evaluate(chord, &next);
  EXPECT_TRUE(first.isEqualTo(last, AcGeTol().setEqualVector(1e-8)));
  EXPECT_NEAR(first.x, 0, 1e-8);
  EXPECT_NEAR(first.y, next.x * -1, 1e-8);
  EXPECT_FALSE(through({{3, 3, 0}, {3, 3, 0}}, false).isValid());
}

TEST(Curves, FailOutsideTheirRangeAndForgiveRounding) {
  AcDbDatabase drawing;
  const AcDbLine line({0, 0, 0}, {10, 0, 0});
  const AcDbArc arc({0, 0, 0}, 10, 0, quarter);
  const AcDbCircle circle({0, 0, 0}, {0, 0, 1}, 10);
  const AcDbEllipse ellipse({0, 0, 0}, {0, 0, 1}, {10, 0, 0}, 0.5, 0, quarter);
  AcDbPolyline bent;
  bent.addVertexAt(0, {0, 0}), bent.addVertexAt(1, {10, 0}), bent.addVertexAt(2, {10, 10});
  AcDbSpline spline;
  AcGeDoubleArray knots;
  for (const double k : {0, 0, 0, 0, 1, 1, 1, 1}) knots.append(k);
  AcGePoint3dArray frame;
  for (const AcGePoint3d& each : {AcGePoint3d{0, 0, 0}, {3, 5, 0}, {6, -5, 0}, {9, 0, 0}}) frame.append(each);
  ASSERT_EQ(spline.setNurbsData(3, knots, frame, AcGeDoubleArray()), Acad::eOk);
  for (const AcDbCurve* const curve :
       std::initializer_list<const AcDbCurve*>{&line, &arc, &circle, &ellipse, &bent, &spline}) {
    double first = 0, last = 0, value = 0;
    AcGePoint3d point;
    AcGeVector3d along;
    curve->getStartParam(first), curve->getEndParam(last);
    const double length = lengthOf(*curve);
    for (const double beyond : {first - 1e-3, last + 1e-3, std::nan("")}) {
      EXPECT_EQ(curve->getPointAtParam(beyond, point), Acad::eInvalidInput) << curve->isA()->dxfName();
      EXPECT_EQ(curve->getDistAtParam(beyond, value), Acad::eInvalidInput);
      EXPECT_EQ(curve->getFirstDeriv(beyond, along), Acad::eInvalidInput);
    }
    for (const double beyond : {-1e-3, length + 1e-3}) {
      EXPECT_EQ(curve->getPointAtDist(beyond, point), Acad::eInvalidInput);
      EXPECT_EQ(curve->getParamAtDist(beyond, value), Acad::eInvalidInput);
    }
    EXPECT_EQ(curve->getParamAtPoint({40, 50, 0}, value), Acad::eInvalidInput);
    EXPECT_EQ(curve->getDistAtPoint({40, 50, 0}, value), Acad::eInvalidInput);
    EXPECT_EQ(curve->getPointAtParam(last + 1e-12, point), Acad::eOk);
    EXPECT_EQ(curve->getPointAtDist(length + 1e-10, point), Acad::eOk);
    ASSERT_EQ(curve->getPointAtDist(length, point), Acad::eOk);
    EXPECT_EQ(curve->getDistAtPoint(point + AcGeVector3d{1e-9, -1e-9, 0}, value), Acad::eOk);
    if (!curve->isClosed()) {
      EXPECT_NEAR(value, length, 1e-8) << curve->isA()->dxfName();
    }
  }
}

TEST(Curves, RefuseWhatIsOutOfRange) {
  const AcDbDatabase drawing;
  const AcDbLine line({1, 2, 0}, {5, 5, 0});
  const AcDbArc arc({0, 0, 0}, 2, 3 * quarter, 5 * quarter);
  const AcDbCircle circle({0, 0, 0}, {0, 0, 1}, 2);
  const AcDbEllipse ellipse({0, 0, 0}, {0, 0, 1}, {3, 0, 0}, 0.5, 0, 2 * quarter);
  AcDbPolyline bent;
  bent.addVertexAt(0, {0, 0}), bent.addVertexAt(1, {4, 0}, 1), bent.addVertexAt(2, {4, 4});
  AcDbSpline wave;
  AcGeDoubleArray knots;
  for (const double k : {0, 0, 0, 0, 1, 1, 1, 1}) knots.append(k);
  AcGePoint3dArray frame;
  for (const AcGePoint3d& each : {AcGePoint3d{-3, -4, 0}, {-1, 6, 0}, {1, -6, 0}, {3, 4, 0}})
    frame.append(each);
  wave.setNurbsData(3, knots, frame, AcGeDoubleArray());
  const AcDbCurve* const curves[] = {&line, &arc, &circle, &ellipse, &bent, &wave};
  for (const AcDbCurve* curve : curves) {
    SCOPED_TRACE(curve - curves[0]);
    const double length = lengthOf(*curve);
    double first = 0, last = 0, number = 0;
    AcGePoint3d start, end, point;
    AcGeVector3d along;
    curve->getStartParam(first), curve->getEndParam(last), curve->getStartPoint(start),
        curve->getEndPoint(end);
    for (const double beyond : {first - 0.01, last + 0.01}) {
      EXPECT_NE(curve->getPointAtParam(beyond, point), Acad::eOk);
      EXPECT_NE(curve->getDistAtParam(beyond, number), Acad::eOk);
      EXPECT_NE(curve->getFirstDeriv(beyond, along), Acad::eOk);
    }
    for (const double beyond : {-0.01, length + 0.01}) {
      EXPECT_NE(curve->getPointAtDist(beyond, point), Acad::eOk);
      EXPECT_NE(curve->getParamAtDist(beyond, number), Acad::eOk);
    }
    EXPECT_NE(curve->getDistAtPoint(start + AcGeVector3d{0, 0, 0.01}, number), Acad::eOk);
    // What was calculated on the curve is on it.
    for (const double place : {0.0, 0.3 * length, length * (1 + 1e-15), -1e-14}) {
      ASSERT_EQ(curve->getPointAtDist(place, point), Acad::eOk) << place;
      ASSERT_EQ(curve->getDistAtPoint(point, number), Acad::eOk) << place;
      const double gap = std::abs(number - place);
      EXPECT_NEAR(start.isEqualTo(end) ? std::min(gap, length - gap) : gap, 0, 1e-6) << place;
    }
  }
}

TEST(Curves, AnswerAsSeenFromAbove) {
  const AcDbDatabase drawing;
  const AcDbLine steep({0, 0, 0}, {10, 0, 100});
  AcGePoint3d near;
  const AcGeVector3d down{0, 0, 1};
  EXPECT_EQ(static_cast<const AcDbCurve&>(steep).getClosestPointTo({3, 4, 0}, down, near), Acad::eOk);
  EXPECT_TRUE(near.isEqualTo({3, 0, 30}));
  AcDbLeader leader;
  for (const AcGePoint3d& each : {AcGePoint3d{0, 0, 0}, {5, 0, 0}, {5, 5, 0}}) leader.appendVertex(each);
  leader.appendVertex({9, 9, 3});  // taken into the plane
  EXPECT_TRUE(leader.lastVertex().isEqualTo({9, 9, 0}));
  EXPECT_NEAR(lengthOf(leader), 10 + std::sqrt(32), 1e-12);
}

TEST(Blocks, ScaledUnevenlyHoldEllipses) {
  AcDbDatabase drawing;
  AcDbObjectId id;
  {
    AcDbObjectPointer<AcDbBlockTable> table(drawing.blockTableId(), AcDb::kForWrite);
    auto* const record = new AcDbBlockTableRecord;
    record->setName(L"round");
    table->add(id, record);
    auto* const circle = new AcDbCircle({0, 0, 0}, {0, 0, 1}, 1);
    record->appendAcDbEntity(circle);
    circle->close();
    record->close();
  }
  AcDbBlockReference placed({10, 0, 0}, id);
  placed.setScaleFactors({3, 2, 1});
  AcDbExtents extents;
  EXPECT_EQ(placed.getGeomExtents(extents), Acad::eOk);
  EXPECT_TRUE(extents.minPoint().isEqualTo({7, -2, 0}) && extents.maxPoint().isEqualTo({13, 2, 0}));
  EXPECT_EQ(meet(AcDbLine({10, -5, 0}, {10, 5, 0}), placed).length(), 2);
}

}  // namespace
