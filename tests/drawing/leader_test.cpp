#include <gtest/gtest.h>

#include <cmath>

#include "brx/db_database.h"
#include "host/database/memory_filer.h"
#include "host/documents/documents.h"
#include "zarbo/drawing/kv_leader.h"

namespace {

constexpr double right = 1.570796326794896619;

/// A drawing at scale 48 with a block "tip" that is one line from the origin to (1 0 0).
class LeaderTest : public testing::Test {
 protected:
  void SetUp() override {
    host::documents().create(L"");
    drawing().setDimscale(48);
    AcDbBlockTable* table = nullptr;
    drawing().getBlockTable(table, AcDb::kForWrite);
    auto* const record = new AcDbBlockTableRecord;
    record->setName(L"tip");
    table->add(block, record);
    table->close();
    auto* const line = new AcDbLine({0, 0, 0}, {1, 0, 0});
    record->appendAcDbEntity(line);
    line->close();
    record->close();
    KVLeader::rxInit();
    acrxBuildClassHierarchy();
  }
  void TearDown() override {
    KVLeader::rxRemove();
    host::documents().closeAll();
    host::documents().discardClosed();
  }
  static AcDbDatabase& drawing() { return *host::documents().current()->database(); }
  std::unique_ptr<KVLeader> leader(double offset = 0.5) const {
    return std::make_unique<KVLeader>(AcGePoint3d{0, 0, 0}, AcGePoint3d{4, 0, 0}, AcGePoint3d{4, 3, 7},
                                      offset, block, drawing().layerZero());
  }

  AcDbObjectId block;
};

/// Lines that an entity drew, in the world's system.
class LineCollector : public AcGiWorldDraw, public AcGiGeometry, public AcGiSubEntityTraits {
 public:
  std::vector<std::pair<AcGePoint3d, AcGePoint3d>> lines;
  Adesk::UInt16 index = 3;
  AcDbObjectId layer;

  AcGiGeometry& geometry() const override { return const_cast<LineCollector&>(*this); }
  AcGiSubEntityTraits& subEntityTraits() const override { return const_cast<LineCollector&>(*this); }
  bool polyline(Adesk::UInt32 count, const AcGePoint3d* points, const AcGeVector3d*, Adesk::Int64) override {
    for (Adesk::UInt32 i = 1; i < count; ++i)
      lines.push_back({transform * points[i - 1], transform * points[i]});
    return false;
  }
  bool polygon(Adesk::UInt32, const AcGePoint3d*) override { return false; }
  bool circle(const AcGePoint3d&, double, const AcGeVector3d&) override { return false; }
  bool circularArc(const AcGePoint3d&, double, const AcGeVector3d&, const AcGeVector3d&, double) override {
    return false;
  }
  bool text(const AcGePoint3d&, const AcGeVector3d&, const AcGeVector3d&, const ACHAR*, Adesk::Int32, bool,
            const AcGiTextStyle&) override {
    return false;
  }
  bool draw(AcGiDrawable* drawable) override {
    index = 256;
    return drawable->worldDraw(this);
  }
  void pushModelTransform(const AcGeMatrix3d& matrix) override { transform = matrix; }
  void popModelTransform() override { transform = {}; }
  Adesk::UInt16 color() const override { return index; }
  void setColor(Adesk::UInt16 color) override { index = color; }
  void setTrueColor(Adesk::UInt32) override {}
  AcDbObjectId layerId() const override { return layer; }
  void setLayer(const AcDbObjectId& id) override { layer = id; }
  void setLineType(const AcDbObjectId&) override {}
  void setLineTypeScale(double) override {}
  void setLineWeight(int) override {}
  void setFillType(AcGiFillType) override {}

 private:
  AcGeMatrix3d transform;
};

TEST_F(LeaderTest, DrawsItsLegsAndItsBlockAndGivesTheColourBack) {
  LineCollector collector;
  leader()->worldDraw(&collector);
  ASSERT_EQ(collector.lines.size(), 3u);
  EXPECT_EQ(collector.lines[0].second, (AcGePoint3d{4, 0, 0}));
  EXPECT_EQ(collector.lines[1].second, (AcGePoint3d{4, 2.5, 7}))
      << "short of the end by the offset, at its height";
  EXPECT_EQ(collector.lines[2].first, (AcGePoint3d{4, 3, 7}));
  EXPECT_EQ(collector.lines[2].second, (AcGePoint3d{4, 3.5, 7}))
      << "the block is turned along the second leg";
  EXPECT_EQ(collector.index, 3);
  EXPECT_EQ(collector.layer, drawing().layerZero());
}

TEST_F(LeaderTest, TheElbowTurnsTheBlockAndScalingLeavesItsSize) {
  const auto drawn = [](KVLeader& moved) {
    LineCollector collector;
    moved.worldDraw(&collector);
    return collector.lines.at(2).second - collector.lines.at(2).first;
  };
  const auto moved = leader();
  AcDbIntArray indices;
  for (const int index : {1, 1, 7, -1}) indices.append(index);
  EXPECT_EQ(moved->moveStretchPointsAt(indices, {-4, 3, 0}), Acad::eOk);
  AcGePoint3d start, middle, end;
  moved->getPoints(start, middle, end);
  EXPECT_EQ(middle, (AcGePoint3d{0, 3, 0})) << "an index given twice moves its point once";
  EXPECT_EQ(drawn(*moved), (AcGeVector3d{0.5, 0, 0}));
  EXPECT_EQ(moved->transformBy(AcGeMatrix3d::scaling(10)), Acad::eOk);
  EXPECT_EQ(drawn(*moved), (AcGeVector3d{0.5, 0, 0}));
  EXPECT_EQ(moved->transformBy(AcGeMatrix3d::rotation(right, {0, 0, 1})), Acad::eOk);
  EXPECT_EQ(drawn(*moved), (AcGeVector3d{0, 0.5, 0}));
}

TEST_F(LeaderTest, AnswersAsTheChordFromStartToEnd) {
  const KVLeader flat({0, 0, 0}, {4, 0, 0}, {4, 3, 0}, 0.5, block, drawing().layerZero());
  double value = 0;
  AcGePoint3d point;
  flat.getEndParam(value);
  EXPECT_DOUBLE_EQ(value, 5);
  flat.getPointAtDist(2.5, point);
  EXPECT_EQ(point, (AcGePoint3d{2, 1.5, 0}));
  flat.getParamAtPoint({4, 0, 0}, value);
  EXPECT_DOUBLE_EQ(value, 3.2);
  flat.getDistAtPoint({4, 0, 0}, value);
  EXPECT_DOUBLE_EQ(value, 4) << "no check whether the point lies on the curve";
}

TEST_F(LeaderTest, MeetsAndSnapsByLegsAndBlock) {
  const AcDbLine across({3.9, 3.25, 7}, {4.1, 3.25, 7}), low({2, -1, 0}, {2, 1, 0});
  AcGePoint3dArray points;
  EXPECT_EQ(leader()->intersectWith(&low, AcDb::kOnBothOperands, points), Acad::eOk);
  EXPECT_EQ(leader()->intersectWith(&across, AcDb::kOnBothOperands, points), Acad::eOk);
  ASSERT_EQ(points.length(), 2);
  EXPECT_EQ(points[1], (AcGePoint3d{4, 3.25, 7}));
  AcDbExtents extents;
  EXPECT_EQ(leader()->getGeomExtents(extents), Acad::eOk);
  EXPECT_EQ(extents.maxPoint(), (AcGePoint3d{4, 3.5, 7}));
  AcDbVoidPtrArray pieces;
  EXPECT_EQ(leader()->explode(pieces), Acad::eOk);
  EXPECT_EQ(pieces.length(), 3);
  for (void* each : pieces) delete static_cast<AcDbEntity*>(each);
}

/// The bytes of an old or foreign version: the entity's own fields, then these.
host::MemoryFiler filed(const KVLeader& entity, Adesk::Int32 version, double offset) {
  host::MemoryFiler filer(AcDb::kFileFiler);
  static_cast<const AcDbEntity&>(entity).AcDbEntity::dwgOutFields(&filer);
  filer.writeInt32(version);
  for (const double x : {1.0, 2.0, 3.0}) filer.writePoint3d({x, 0, 0});
  filer.writeDouble(offset);
  filer.writeBool(false);
  return filer;
}

TEST_F(LeaderTest, OldFilesHoldTheOffsetInSheetUnits) {
  struct Case {
    Adesk::Int32 version;
    Acad::ErrorStatus status;
    double legEnd;  // x where the second leg ends: the end at 3, short by the offset
  };
  const Case cases[] = {{1, Acad::eOk, 3 - 0.5 * 48},
                        {2, Acad::eOk, 2.5},
                        {3, Acad::eMakeMeProxy, 0},
                        {0, Acad::eOk, 0},
                        {-1, Acad::eOk, 0}};
  for (const Case& each : cases) {
    auto filer = filed(*leader(), each.version, 0.5);
    KVLeader read;
    EXPECT_EQ(read.dwgInFields(&filer), each.status) << each.version;
    LineCollector collector;
    read.worldDraw(&collector);
    EXPECT_DOUBLE_EQ(collector.lines.at(1).second.x, each.legEnd) << each.version;
  }
}

TEST_F(LeaderTest, FilesAreVersion2AndForgetABlockThatIsErased) {
  const auto linesAfter = [&](AcDb::FilerType type) {
    host::MemoryFiler filer(type);
    EXPECT_EQ(leader()->dwgOutFields(&filer), Acad::eOk);
    KVLeader read;
    EXPECT_EQ(read.dwgInFields(&filer), Acad::eOk);
    AcDbVoidPtrArray pieces;
    read.explode(pieces);
    for (void* each : pieces) delete static_cast<AcDbEntity*>(each);
    return pieces.length();
  };
  EXPECT_EQ(linesAfter(AcDb::kFileFiler), 3);
  {
    AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForWrite);
    record->erase();
  }
  EXPECT_EQ(linesAfter(AcDb::kFileFiler), 2);
  host::MemoryFiler undo(AcDb::kUndoFiler), file(AcDb::kFileFiler);
  leader()->dwgOutFields(&undo);
  leader()->dwgOutFields(&file);
  EXPECT_GT(undo.take().size(), file.take().size()) << "undo brings the block back";
}

}  // namespace
