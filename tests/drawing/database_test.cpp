#include <gtest/gtest.h>

#include "brx/db_block.h"
#include "brx/db_calls.h"
#include "brx/db_database.h"
#include "brx/lisp_calls.h"

namespace {

class Drawing : public testing::Test {
 protected:
  void SetUp() override { acdbSetHostWorkingDatabase(&drawing); }
  AcDbObjectId append(AcDbEntity* entity, AcDbObjectId record = {}) {
    AcDbObjectPointer<AcDbBlockTableRecord> space(record.isNull() ? drawing.modelSpaceId() : record,
                                                  AcDb::kForWrite);
    AcDbObjectId id;
    status = space->appendAcDbEntity(id, entity);
    if (status == Acad::eOk) entity->close();
    return id;
  }
  AcDbObjectId block(const ACHAR* name) {
    AcDbObjectPointer<AcDbBlockTable> table(drawing.tableId(AcDbBlockTable::desc()), AcDb::kForWrite);
    auto* const record = new AcDbBlockTableRecord;
    record->setName(name);
    AcDbObjectId id;
    table->add(id, record);
    record->close();
    return id;
  }
  AcDbDatabase drawing;
  Acad::ErrorStatus status = Acad::eOk;
};

TEST_F(Drawing, OpensByTheRules) {
  const AcDbObjectId id = append(new AcDbLine({0, 0, 0}, {1, 0, 0}));
  {
    AcDbObjectPointer<AcDbLine> first(id), second(id);
    EXPECT_EQ(second.openStatus(), Acad::eOk);
    EXPECT_EQ(AcDbObjectPointer<AcDbLine>(id, AcDb::kForWrite).openStatus(), Acad::eWasOpenForRead);
    EXPECT_EQ(first->upgradeOpen(), Acad::eWasOpenForRead);
    EXPECT_EQ(first->erase(), Acad::eNotOpenForWrite);
  }
  EXPECT_EQ(AcDbObjectPointer<AcDbCircle>(id).openStatus(), Acad::eNotThatKindOfClass);
  EXPECT_EQ(AcDbObjectPointer<AcDbLine>(AcDbObjectId()).openStatus(), Acad::eNullObjectId);
  AcDbObjectPointer<AcDbLine> writer(id, AcDb::kForWrite);
  EXPECT_EQ(AcDbObjectPointer<AcDbLine>(id).openStatus(), Acad::eWasOpenForWrite);
  EXPECT_EQ(writer->erase(), Acad::eOk);
  writer.close();
  EXPECT_EQ(AcDbObjectPointer<AcDbLine>(id).openStatus(), Acad::eWasErased);
  EXPECT_EQ(AcDbObjectPointer<AcDbLine>(id, AcDb::kForRead, true).openStatus(), Acad::eOk);
}

TEST_F(Drawing, UndoTakesBackChangesAndNewEntities) {
  const AcDbObjectId old = append(new AcDbLine({0, 0, 0}, {1, 0, 0}));
  const size_t mark = drawing.undoMark();
  AcDbObjectPointer<AcDbLine>(old, AcDb::kForWrite)->setEndPoint({9, 9, 9});
  const AcDbObjectId made = append(new AcDbCircle({0, 0, 0}, {0, 0, 1}, 1));
  AcDbObjectPointer<AcDbLine>(old, AcDb::kForWrite)->erase();
  drawing.undoTo(mark);
  EXPECT_TRUE(made.isErased());
  ASSERT_FALSE(old.isErased());
  EXPECT_TRUE(AcDbObjectPointer<AcDbLine>(old)->endPoint().isEqualTo({1, 0, 0}));
}

TEST_F(Drawing, ExtendedDataNeedsARegisteredApplicationAndKeepsTheOthers) {
  AcDbObjectPointer<AcDbLine> line(append(new AcDbLine), AcDb::kForWrite);
  resbuf* data = acutBuildList(1001, L"KORVANE", 1000, L"key", 1040, 2.5, RTNONE);
  EXPECT_EQ(line->setXData(data), Acad::eRegappIdNotFound);
  acdbRegApp(L"KORVANE");
  acdbRegApp(L"OTHER");
  EXPECT_EQ(line->setXData(data), Acad::eOk);
  resbuf* other = acutBuildList(1001, L"OTHER", 1071, 7, RTNONE);
  EXPECT_EQ(line->setXData(other), Acad::eOk);
  resbuf* read = line->xData(L"korvane");
  ASSERT_TRUE(read && read->rbnext && read->rbnext->rbnext);
  EXPECT_EQ(read->rbnext->rbnext->resval.rreal, 2.5);
  EXPECT_EQ(read->rbnext->rbnext->rbnext, nullptr);
  acutRelRb(read);
  acutRelRb(other);
  acutRelRb(data);
  resbuf* big = acutBuildList(1001, L"OTHER", 1000, std::wstring(20000, L'x').c_str(), RTNONE);
  EXPECT_EQ(line->setXData(big), Acad::eXDataSizeExceeded);
  acutRelRb(big);
}

TEST_F(Drawing, BlocksExplodeThroughNestingAndRefuseCycles) {
  const AcDbObjectId inner = block(L"inner"), outer = block(L"outer");
  append(new AcDbLine({1, 0, 0}, {2, 0, 0}), inner);
  append(new AcDbBlockReference({10, 0, 0}, inner), outer);
  AcDbBlockReference cycle({0, 0, 0}, outer);
  AcDbObjectPointer<AcDbBlockTableRecord> record(inner, AcDb::kForWrite);
  EXPECT_EQ(record->appendAcDbEntity(&cycle), Acad::eSelfReference);
  record.close();
  AcDbBlockReference placed({0, 100, 0}, outer);
  placed.setScaleFactors({2, 2, 2});
  AcDbExtents extents;
  EXPECT_EQ(placed.getGeomExtents(extents), Acad::eOk);
  EXPECT_TRUE(extents.minPoint().isEqualTo({22, 100, 0}) && extents.maxPoint().isEqualTo({24, 100, 0}));
}

TEST_F(Drawing, NamesAreCheckedAndFoundWithoutCase) {
  AcDbObjectPointer<AcDbLayerTable> table(drawing.tableId(AcDbLayerTable::desc()), AcDb::kForWrite);
  auto* const layer = new AcDbLayerTableRecord;
  EXPECT_EQ(layer->setName(L"a<b"), Acad::eInvalidInput);
  EXPECT_EQ(layer->setName(L"Duct"), Acad::eOk);
  EXPECT_EQ(table->add(layer), Acad::eOk);
  layer->close();
  AcDbObjectId id;
  EXPECT_EQ(table->getAt(L"DUCT", id), Acad::eOk);
  EXPECT_EQ(table->getAt(L"none", id), Acad::eKeyNotFound);
  AcDbLayerTableRecord twin;
  twin.setName(L"duct");
  EXPECT_EQ(table->add(&twin), Acad::eDuplicateKey);
}

TEST_F(Drawing, EntitiesAreWalkedFromLisp) {
  ads_name name, next;
  EXPECT_EQ(acdbEntNext(nullptr, name), RTERROR);
  append(new AcDbLine);
  const AcDbObjectId last = append(new AcDbPoint);
  EXPECT_EQ(acdbEntNext(nullptr, name), RTNORM);
  EXPECT_EQ(acdbEntNext(name, next), RTNORM);
  EXPECT_EQ(reinterpret_cast<AcDbStub*>(next[0]), last.stub());
  EXPECT_EQ(acdbEntDel(next), RTNORM);
  EXPECT_EQ(acdbEntNext(name, next), RTERROR);
}

}  // namespace
