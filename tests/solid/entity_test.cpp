#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <memory>

#include "brx/db_faces.h"
#include "host/database/memory_filer.h"
#include "host/documents/documents.h"
#include "host/view/recorder.h"
#include "host/view/view.h"
#include "solid/hvac_solid.h"

namespace {

class SolidTest : public testing::Test {
 protected:
  void SetUp() override {
    host::documents().create(L"");
    HvacSolid::rxInit();
    acrxBuildClassHierarchy();
  }
  void TearDown() override {
    HvacSolid::rxRemove();
    host::documents().closeAll();
    host::documents().discardClosed();
  }
  static AcDbDatabase& drawing() { return *host::documents().current()->database(); }

  const AcGeVector3d alongX[3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  const AcGeVector3d alongY[3] = {{0, 1, 0}, {-1, 0, 0}, {0, 0, 1}};

  std::unique_ptr<HvacSolid> bar(bool rectangular = true) const {
    auto made = std::make_unique<HvacSolid>();
    made->addTransition({0, 0, 0}, rectangular, 20, 20, {100, 0, 0}, rectangular, 20, 20, alongX, alongX, 0);
    return made;
  }
};

/// All that a preparation is handed, so that it can be compared byte by byte.
struct Prepared {
  AcGePoint3d head, tail, third;
  AModeler::Point3d corners[3][8];
  AcGePoint3d places[3][8];
  AcGeVector3d axes[3][3];
};

TEST_F(SolidTest, IsFoundByItsClass) {
  ASSERT_NE(kv_hvacSolid::desc(), nullptr);
  const std::unique_ptr<kv_hvacSolid> made(kv_hvacSolid::create());
  EXPECT_EQ(kv_hvacSolid::cast(made.get()), made.get());
  EXPECT_STREQ(made->isA()->dxfName(), L"KV_HVACSOLID");
  const AcDbFace other;
  EXPECT_EQ(kv_hvacSolid::cast(&other), nullptr);
  EXPECT_EQ(dynamic_cast<HvacSolid&>(*made).bodyCount(), 0);
}

TEST_F(SolidTest, FillsTheArraysOfASquareElbow) {
  Prepared p;
  p.head = {-100, 0, 0}, p.tail = {0, 90, 0};
  HvacSolid solid;
  ASSERT_TRUE(solid.addSquareElbowPrep(p.head, 20, 10, p.tail, 20, 10, alongX, alongY, true, p.corners[0],
                                       p.corners[1], p.places[0], true, 3.0));
  EXPECT_EQ(solid.bodyCount(), 0);
  const auto expectAt = [](const AModeler::Point3d& found, double x, double y, double z) {
    EXPECT_NEAR(found.x, x, 1e-12);
    EXPECT_NEAR(found.y, y, 1e-12);
    EXPECT_NEAR(found.z, z, 1e-12);
  };
  expectAt(p.corners[0][0], -13, -10, -5);
  expectAt(p.corners[0][4], 10, -10, -5);  // outer
  expectAt(p.corners[0][6], -10, 10, 5);   // inner
  expectAt(p.corners[1][0], 10, 13, -5);
  EXPECT_TRUE(p.places[0][1].isEqualTo({-10, 10, 0}));
  EXPECT_TRUE(p.places[0][2].isEqualTo({10, -10, 0}));
  EXPECT_TRUE(p.places[0][3].isEqualTo(p.head));
  EXPECT_NEAR(p.places[0][5].distanceTo(p.head), 1, 1e-12);
  EXPECT_TRUE(solid.addSquareElbow(p.head, 20, 10, p.tail, 20, 10, alongX, alongY, true, p.corners[0],
                                   p.corners[1], p.places[0], 0));
  // Without collars the elbow ends at the inner corner.
  p.head = {-100, 0, 0}, p.tail = {0, 90, 0};
  ASSERT_TRUE(solid.addSquareElbowPrep(p.head, 20, 10, p.tail, 20, 10, alongX, alongY, true, p.corners[0],
                                       p.corners[1], p.places[0], false, 3.0));
  EXPECT_EQ(p.head.x, -10);
  // Arrays that make no mitre are refused.
  AModeler::Point3d nonsense[8] = {};
  EXPECT_FALSE(solid.addSquareElbow(p.head, 20, 10, p.tail, 20, 10, alongX, alongY, true, nonsense, nonsense,
                                    p.places[0], 0));
  nonsense[4].x = std::nan("");
  EXPECT_FALSE(solid.addSquareElbow(p.head, 20, 10, p.tail, 20, 10, alongX, alongY, true, nonsense, nonsense,
                                    p.places[0], 0));
  EXPECT_EQ(solid.bodyCount(), 1);
}

TEST_F(SolidTest, ARefusalLeavesEverythingBitForBit) {
  const double bad = std::nan("");
  for (int way = 0; way < 6; ++way) {
    Prepared p;
    std::memset(static_cast<void*>(&p), 7, sizeof p);
    p.head = {-100, 0, 0}, p.tail = {0, 90, 0}, p.third = {90, 0, 0};
    std::copy(alongX, alongX + 3, p.axes[0]), std::copy(alongX, alongX + 3, p.axes[2]);
    std::copy(alongY, alongY + 3, p.axes[1]);
    double height = 10;
    if (way == 0) height = 9;
    if (way == 1) p.tail.z = 50;
    if (way == 2) p.tail.x = bad;
    if (way == 3) p.axes[1][0] = {1, 0, 0};
    if (way == 4) height = 0;
    if (way == 5) p.axes[1][0] = {-1, 0, 0};
    const Prepared before = p;
    auto solid = bar();
    EXPECT_FALSE(solid->addSquareElbowPrep(p.head, 20, 10, p.tail, 20, height, p.axes[0], p.axes[1], true,
                                           p.corners[0], p.corners[1], p.places[0], true, 3.0))
        << way;
    EXPECT_FALSE(solid->addRadiusElbow(p.head, 20, 10, 0, 0, p.tail, 20, height, p.axes[0], p.axes[1], true,
                                       1.5, true, 0, true))
        << way;
    if (way != 0) {
      EXPECT_FALSE(solid->addWyePrep(p.head, 20, 10, p.tail, 20, height, p.third, 20, 10, p.axes[0],
                                     p.axes[1], p.axes[2], true, p.corners[0], p.corners[1], p.corners[2],
                                     p.places[0], p.places[1], p.places[2], true, 3.0))
          << way;
    }
    EXPECT_EQ(std::memcmp(&p, &before, sizeof p), 0) << way;
    EXPECT_EQ(solid->bodyCount(), 1);
    EXPECT_NEAR(solid->body(0).volume, 40000, 1e-9);
  }
}

TEST_F(SolidTest, RadiusElbowsCountToTheThroatOrTheCentreLine) {
  AcGePoint3d head{-100, 0, 0}, tail{0, 90, 0};
  HvacSolid solid;
  ASSERT_TRUE(
      solid.addRadiusElbow(head, 20, 10, 0, 0, tail, 20, 10, alongX, alongY, true, 1, true, 0, false));
  EXPECT_NEAR(head.x, -20, 1e-12);
  EXPECT_EQ(solid.bodyCount(), 0) << "moves the points alone";
  ASSERT_TRUE(
      solid.addRadiusElbow(head, 20, 10, 0, 0, tail, 20, 10, alongX, alongY, true, 1, false, 0, true));
  EXPECT_NEAR(head.x, -30, 1e-12);
  EXPECT_EQ(solid.bodyCount(), 1);
  const AcGePoint3d before = head;
  EXPECT_FALSE(
      solid.addRadiusElbow(head, 20, 10, 0, 0, tail, 20, 10, alongX, alongY, true, -1, true, 0, true));
  EXPECT_EQ(head.x, before.x);
}

TEST_F(SolidTest, BendsOfOvalsAreSmoothAllAround) {
  HvacSolid solid;
  AcGePoint3d head{-100, 0, 0}, tail{0, 90, 0};
  ASSERT_TRUE(
      solid.addRadiusElbow(head, 10, 26, 0, 0, tail, 10, 26, alongX, alongY, false, 2, true, 0, true));
  AcGePoint3dArray middles;
  AcDbIntArray ids;
  solid.getOsnapPoints(AcDb::kOsModeMid, 0, {}, {}, {}, middles, ids);
  // Of sharp edges: the two ends with 26 each, and the tangent lines of two straight sides in 6 steps.
  EXPECT_EQ(middles.length(), 2 * 26 + 4 * 6);
}

TEST_F(SolidTest, SlicesTheLastBodyOnly) {
  auto solid = bar();
  solid->addTransition({0, 0, 50}, true, 20, 20, {100, 0, 50}, true, 20, 20, alongX, alongX, 0);
  const auto slice = [&](double x, double side) {
    solid->sliceLast({x, 0, 0}, {x, 1, 0}, {x, 0, 1}, {side, 0, 0});
  };
  slice(40, 90);
  EXPECT_NEAR(solid->body(0).volume, 40000, 1e-9);
  EXPECT_NEAR(solid->body(1).volume, 24000, 1e-9);
  solid->sliceLast({50, 0, 0}, {60, 0, 0}, {70, 0, 0}, {0, 9, 0});
  slice(70, 70);
  EXPECT_NEAR(solid->body(1).volume, 24000, 1e-9)
      << "points on a line, and a fourth one in the plane, do nothing";
  slice(200, 300);
  EXPECT_EQ(solid->bodyCount(), 1) << "nothing is left";
  solid->clearBodies();
  slice(50, 60);
  EXPECT_EQ(solid->bodyCount(), 0);
}

TEST_F(SolidTest, SubtractsFromAllBodies) {
  auto solid = bar();
  solid->addTransition({0, 0, 15}, true, 20, 20, {100, 0, 15}, true, 20, 20, alongX, alongX, 0);
  const auto bore = [&](double size) {
    return solid->subtractTransition({50, -50, 7}, true, size, size, {50, 50, 7}, true, size, size, alongY,
                                     alongY, 0);
  };
  EXPECT_FALSE(bore(0));
  EXPECT_TRUE(bore(10));
  EXPECT_NEAR(solid->body(0).volume, 40000 - 10 * 20 * 8, 1e-9);
  EXPECT_NEAR(solid->body(1).volume, 40000 - 10 * 20 * 7, 1e-9);
  EXPECT_TRUE(solid->subtractTransition({0, 0, 500}, true, 1, 1, {9, 0, 500}, true, 1, 1, alongX, alongX, 0))
      << "touches nothing, and that is no failure";
  EXPECT_TRUE(bore(1000));
  EXPECT_EQ(solid->bodyCount(), 0);
}

TEST_F(SolidTest, UnionTakesOverAndLeavesTheOther) {
  auto solid = bar(), other = bar();
  EXPECT_FALSE(solid->doUnion(nullptr));
  EXPECT_FALSE(solid->doUnion(solid.get()));
  other->transformBy(AcGeMatrix3d::translation({50, 5, 5}));
  EXPECT_TRUE(solid->doUnion(other.get()));
  EXPECT_EQ(solid->bodyCount(), 1);
  EXPECT_NEAR(solid->body(0).volume, 80000 - 50 * 15 * 15, 1e-7);
  EXPECT_EQ(other->bodyCount(), 1);
}

TEST_F(SolidTest, StaysExactUnderEveryAffineMap) {
  auto solid = bar(false);
  const double volume = solid->body(0).volume;
  AcGeMatrix3d stretched;
  stretched.entry[0][0] = 2, stretched.entry[1][1] = -3, stretched.entry[0][1] = 0.5,
  stretched.entry[2][3] = 7;
  EXPECT_EQ(solid->transformBy(stretched), Acad::eOk);
  const BrxSolidBody after = solid->body(0);
  EXPECT_NEAR(after.volume, 6 * volume, 1e-6);
  EXPECT_TRUE(after.closed);
  AcGeMatrix3d flattened;
  flattened.entry[2][2] = 0;
  EXPECT_NE(solid->transformBy(flattened), Acad::eOk);
  EXPECT_EQ(solid->body(0).volume, after.volume);
}

TEST_F(SolidTest, ExplodesIntoFacesWithoutInnerEdges) {
  auto solid = bar(false);
  solid->setColorIndex(3);
  AcDbVoidPtrArray pieces;
  ASSERT_EQ(solid->explode(pieces), Acad::eOk);
  // 24 sides, and each end of 24 corners in 11 pieces.
  EXPECT_EQ(pieces.length(), 24 + 2 * 11);
  int visible = 0;
  for (void* each : pieces) {
    const std::unique_ptr<AcDbFace> face(AcDbFace::cast(static_cast<AcDbEntity*>(each)));
    ASSERT_TRUE(face);
    EXPECT_EQ(face->colorIndex(), 3);
    for (Adesk::UInt16 edge = 0; edge < 4; ++edge) {
      bool shows = false;
      face->isEdgeVisibleAt(edge, shows);
      visible += shows;
    }
  }
  EXPECT_EQ(visible, 24 * 4 + 2 * 24);
}

TEST_F(SolidTest, CrossesLinesAtItsEdges) {
  const auto solid = bar();
  const AcDbLine line({50, -50, 10}, {50, 50, 10});
  AcGePoint3dArray points;
  ASSERT_EQ(solid->intersectWith(&line, AcDb::kOnBothOperands, points), Acad::eOk);
  ASSERT_EQ(points.length(), 2);
  EXPECT_NEAR(std::abs(points[0].y), 10, 1e-9);
}

TEST_F(SolidTest, FilesItselfAndGoesProxyForNewerVersions) {
  auto solid = bar(false);
  solid->setKind(BrxSolidKind::elbow);
  host::MemoryFiler out(AcDb::kFileFiler);
  ASSERT_EQ(solid->dwgOutFields(&out), Acad::eOk);
  std::vector<unsigned char> bytes = out.take();
  HvacSolid back;
  host::MemoryFiler in(AcDb::kFileFiler, bytes);
  ASSERT_EQ(back.dwgInFields(&in), Acad::eOk);
  EXPECT_EQ(back.kind(), BrxSolidKind::elbow);
  EXPECT_EQ(back.body(0).volume, solid->body(0).volume);
  AcGePoint3dArray ends;
  back.getStretchPoints(ends);
  EXPECT_EQ(ends.length(), 2);

  host::MemoryFiler entityPart(AcDb::kFileFiler);
  solid->AcDbEntity::dwgOutFields(&entityPart);
  const size_t version = entityPart.take().size();
  std::vector<unsigned char> newer = bytes;
  newer[version] = 2;
  host::MemoryFiler newerIn(AcDb::kFileFiler, newer);
  EXPECT_EQ(HvacSolid().dwgInFields(&newerIn), Acad::eMakeMeProxy);
}

/// Reads bytes, and does with what comes of them what commands do.
Acad::ErrorStatus readAndUse(const std::vector<unsigned char>& bytes) {
  HvacSolid read;
  host::MemoryFiler filer(AcDb::kFileFiler, bytes);
  const Acad::ErrorStatus status = read.dwgInFields(&filer);
  if (status != Acad::eOk) return status;
  for (int i = 0; i < read.bodyCount(); ++i) EXPECT_TRUE(read.body(i).closed);
  AcDbExtents extents;
  read.getGeomExtents(extents);
  read.transformBy(AcGeMatrix3d::rotation(0.3, {0, 0, 1}));
  read.sliceLast({5, 0, 0}, {5, 1, 0}, {5, 0, 1}, {9, 0, 0});
  host::MemoryFiler again(AcDb::kFileFiler);
  EXPECT_EQ(read.dwgOutFields(&again), Acad::eOk);
  return status;
}

TEST_F(SolidTest, BytesCutOrChangedAnywhereMakeNoBrokenBody) {
  auto solid = bar(false), other = bar();
  other->transformBy(AcGeMatrix3d::translation({50, 5, 5}));
  ASSERT_TRUE(solid->doUnion(other.get()));
  host::MemoryFiler out(AcDb::kFileFiler);
  solid->dwgOutFields(&out);
  const std::vector<unsigned char> bytes = out.take();
  ASSERT_EQ(readAndUse(bytes), Acad::eOk);
  for (size_t at = 0; at < bytes.size(); ++at) {
    const std::vector<unsigned char> cut(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(at));
    ASSERT_NE(readAndUse(cut), Acad::eOk) << at;
    std::vector<unsigned char> changed = bytes;
    changed[at] ^= static_cast<unsigned char>(at % 7 == 0 ? 0xFF : 1 << at % 8);
    readAndUse(changed);
  }
}

TEST_F(SolidTest, ShowsQuarterLinesAsWiresAndOutlinesFromAView) {
  AcDbObjectPointer<AcDbBlockTableRecord> space(drawing().modelSpaceId(), AcDb::kForWrite);
  HvacSolid* const solid = bar(false).release();
  space->appendAcDbEntity(solid);
  solid->close();
  space.close();
  const auto count = [](const host::view::DisplayList& list, host::view::Item::Kind kind) {
    return std::count_if(list.items.begin(), list.items.end(),
                         [&](const auto& each) { return each.kind == kind; });
  };
  const host::view::DisplayList wires = host::view::record(drawing());
  EXPECT_EQ(count(wires, host::view::Item::polyline), 2 * 24 + 4);
  EXPECT_EQ(count(wires, host::view::Item::polygon), 0);
  const AcGeVector3d towards = host::view::Projection::isometric().towards();
  const host::view::DisplayList seen = host::view::record(drawing(), {}, 0.01, &towards);
  EXPECT_EQ(count(seen, host::view::Item::polyline), 2 * 24 + 2) << "two lines where the surface turns away";
  EXPECT_EQ(count(seen, host::view::Item::polygon), 26);
}

}  // namespace
