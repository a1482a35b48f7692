#include <gtest/gtest.h>

#include "brx/db_attributes.h"
#include "brx/db_block.h"
#include "brx/db_dictionary.h"
#include "brx/db_polylines.h"
#include "brx/db_transactions.h"
#include "brx/db_viewport.h"
#include "brx/lisp_calls.h"
#include "host/database/header_variables.h"
#include "host/database/proxies.h"

namespace {

class Objects : public testing::Test {
 protected:
  void SetUp() override { acdbSetHostWorkingDatabase(&drawing); }
  AcDbObjectId append(AcDbEntity* entity, AcDbDatabase* to = nullptr) {
    AcDbDatabase& target = to ? *to : drawing;
    AcDbObjectPointer<AcDbBlockTableRecord> space(target.modelSpaceId(), AcDb::kForWrite);
    AcDbObjectId id;
    EXPECT_EQ(space->appendAcDbEntity(id, entity), Acad::eOk);
    entity->close();
    return id;
  }
  AcDbObjectId layer(const ACHAR* name, AcDbDatabase* to = nullptr) {
    AcDbDatabase& target = to ? *to : drawing;
    AcDbObjectPointer<AcDbLayerTable> table(target.layerTableId(), AcDb::kForWrite);
    auto* const record = new AcDbLayerTableRecord;
    record->setName(name);
    AcDbObjectId id;
    EXPECT_EQ(table->add(id, record), Acad::eOk);
    record->close();
    return id;
  }
  AcDbDatabase drawing;
};

TEST_F(Objects, GroupsLieInTheirDictionaryInTheOrderOfNames) {
  AcDbDictionary* groups = nullptr;
  ASSERT_EQ(drawing.getGroupDictionary(groups, AcDb::kForWrite), Acad::eOk);
  AcDbObjectId id, other;
  auto* const group = new AcDbGroup(L"a set");
  EXPECT_EQ(groups->setAt(L"Zeta", group, id), Acad::eOk);
  auto* const second = new AcDbGroup;
  EXPECT_EQ(groups->setAt(L"alpha", second, other), Acad::eOk);
  second->close();
  const AcDbObjectId line = append(new AcDbLine);
  EXPECT_EQ(group->append(line), Acad::eOk);
  EXPECT_EQ(group->append(line), Acad::eDuplicateKey);
  group->close();
  const std::unique_ptr<AcDbDictionaryIterator> walk(groups->newIterator());
  EXPECT_STREQ(walk->name(), L"alpha");
  EXPECT_EQ(groups->remove(L"ALPHA"), Acad::eOk);
  EXPECT_EQ(groups->getAt(L"alpha", other), Acad::eKeyNotFound);
  EXPECT_EQ(groups->numEntries(), 1u);
  groups->close();
  EXPECT_TRUE(other.isErased());
  EXPECT_EQ(AcDbObjectPointer<AcDbGroup>(id)->getName(), L"Zeta");
  AcDbObjectPointer<AcDbLine>(line, AcDb::kForWrite)->erase();
  EXPECT_EQ(AcDbObjectPointer<AcDbGroup>(id)->numEntities(), 0u);
}

TEST_F(Objects, TransactionsNestAndTakeBackWhatIsAborted) {
  const AcDbObjectId id = append(new AcDbLine({0, 0, 0}, {1, 0, 0}));
  AcDbTransactionManager& manager = *drawing.transactionManager();
  EXPECT_EQ(manager.endTransaction(), Acad::eNoActiveTransactions);
  AcDbLine* line = nullptr;
  manager.startTransaction();
  EXPECT_EQ(manager.getObject(line, id), Acad::eOk);
  EXPECT_EQ(manager.getObject(line, id, AcDb::kForWrite), Acad::eOk);
  line->setEndPoint({2, 0, 0});
  manager.startTransaction();
  EXPECT_EQ(manager.getObject(line, id, AcDb::kForWrite), Acad::eOk);
  line->setEndPoint({3, 0, 0});
  const AcDbObjectId made = append(new AcDbPoint);
  EXPECT_EQ(manager.abortTransaction(), Acad::eOk);
  EXPECT_TRUE(made.isErased());
  EXPECT_EQ(line->endPoint().x, 2);
  EXPECT_EQ(AcDbObjectPointer<AcDbLine>(id).openStatus(), Acad::eWasOpenForWrite);
  EXPECT_EQ(manager.endTransaction(), Acad::eOk);
  EXPECT_EQ(AcDbObjectPointer<AcDbLine>(id)->endPoint().x, 2);
  EXPECT_EQ(manager.numActiveTransactions(), 0);
}

TEST_F(Objects, UndoBringsNamesVariablesAndVerticesBack) {
  const AcDbObjectId duct = layer(L"Duct");
  AcGePoint3dArray points;
  for (const AcGePoint3d& each : {AcGePoint3d{0, 0, 0}, {1, 1, 0}, {2, 0, 0}}) points.append(each);
  const AcDbObjectId polyline = append(new AcDb2dPolyline(AcDb::k2dSimplePoly, points));
  const auto length = [&] {
    AcDbObjectPointer<AcDb2dPolyline> line(polyline);
    double end = 0, found = 0;
    line->getEndParam(end), line->getDistAtParam(end, found);
    return found;
  };
  const double before = length();
  const size_t mark = drawing.undoMark();
  AcDbObjectPointer<AcDbLayerTableRecord>(duct, AcDb::kForWrite)->setName(L"Pipe");
  drawing.setDimscale(48);
  EXPECT_EQ(AcDbObjectPointer<AcDb2dPolyline>(polyline, AcDb::kForWrite)->curveFit(), Acad::eOk);
  EXPECT_GT(length(), before);
  drawing.undoTo(mark);
  AcDbObjectId found;
  AcDbObjectPointer<AcDbLayerTable> table(drawing.layerTableId());
  EXPECT_EQ(table->getAt(L"Duct", found), Acad::eOk);
  EXPECT_EQ(table->getAt(L"Pipe", found), Acad::eKeyNotFound);
  EXPECT_EQ(drawing.dimscale(), 1);
  EXPECT_DOUBLE_EQ(length(), before);
}

TEST_F(Objects, LockedLayersRefuseWritersAndLayersKeepTheirRules) {
  const AcDbObjectId duct = layer(L"Duct");
  auto* const line = new AcDbLine;
  line->setLayer(duct);
  const AcDbObjectId id = append(line);
  AcDbObjectPointer<AcDbLayerTableRecord> record(duct, AcDb::kForWrite);
  record->setIsLocked(true);
  EXPECT_EQ(record->setLineWeight(17), Acad::eInvalidInput);
  EXPECT_EQ(record->setLineWeight(18), Acad::eOk);
  EXPECT_EQ(record->setName(L"*Duct"), Acad::eInvalidInput);
  EXPECT_EQ(record->setName(std::wstring(256, L'x').c_str()), Acad::eInvalidInput);
  EXPECT_EQ(record->setPlotStyleName(L"Normal"), Acad::eNotApplicable);
  EXPECT_EQ(AcDbLayerTableRecord().setPlotStyleName(L"Normal"), Acad::eNotInDatabase);
  host::setHeaderValue(drawing, *host::findHeaderVariable(L"PSTYLEMODE"), 0);
  EXPECT_EQ(record->setPlotStyleName(L"none"), Acad::eKeyNotFound);
  EXPECT_EQ(record->setPlotStyleName(L"normal"), Acad::eOk);
  record.close();
  EXPECT_EQ(AcDbObjectPointer<AcDbLine>(id, AcDb::kForWrite).openStatus(), Acad::eOnLockedLayer);
  EXPECT_EQ(AcDbObjectPointer<AcDbLine>(id)->upgradeOpen(), Acad::eOnLockedLayer);
  AcDbObjectPointer<AcDbLayerTableRecord> zero(drawing.layerZero(), AcDb::kForWrite);
  EXPECT_EQ(zero->setName(L"nought"), Acad::eInvalidInput);
  EXPECT_EQ(zero->setIsFrozen(true), Acad::eInvalidInput);
  EXPECT_EQ(zero->erase(), Acad::eCannotBeErasedByCaller);
}

TEST_F(Objects, DrawOrderMovesToTheBottomAndBack) {
  AcDbObjectIdArray ids;
  for (int i = 0; i < 4; ++i) ids.append(append(new AcDbLine));
  AcDbSortentsTable* table = nullptr;
  AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId());
  EXPECT_EQ(space->getSortentsTable(table, AcDb::kForWrite), Acad::eKeyNotFound);
  ASSERT_EQ(space->getSortentsTable(table, AcDb::kForWrite, true), Acad::eOk);
  AcDbObjectIdArray moved, order;
  moved.append(ids[2]), moved.append(ids[3]);
  EXPECT_EQ(table->moveToBottom(moved), Acad::eOk);
  table->getFullDrawOrder(order);
  EXPECT_TRUE(order[0] == ids[2] && order[1] == ids[3] && order[2] == ids[0] && order[3] == ids[1]);
  EXPECT_EQ(table->moveToTop(moved), Acad::eOk);
  table->getFullDrawOrder(order);
  EXPECT_TRUE(order[0] == ids[0] && order[3] == ids[3]);
  moved.append(drawing.layerZero());
  EXPECT_EQ(table->moveToTop(moved), Acad::eInvalidInput);
  table->close();
}

TEST_F(Objects, InsertBringsWhatTheBlockUsesAndKeepsWhatIsHere) {
  AcDbDatabase other;
  auto* const line = new AcDbLine({0, 0, 0}, {5, 0, 0});
  line->setLayer(layer(L"Shared", &other));
  append(line, &other);
  auto* const second = new AcDbLine;
  second->setLayer(layer(L"New", &other));
  append(second, &other);
  const AcDbObjectId shared = layer(L"SHARED");
  AcDbObjectId block;
  ASSERT_EQ(drawing.insert(block, L"part", &other), Acad::eOk);
  AcDbObjectPointer<AcDbBlockTableRecord> record(block);
  ASSERT_EQ(record->entityIds().size(), 2u);
  EXPECT_TRUE(AcDbObjectPointer<AcDbLine>(record->entityIds()[0])->layerId() == shared);
  EXPECT_EQ(AcDbObjectPointer<AcDbLine>(record->entityIds()[1])->layer(), L"New");
  EXPECT_EQ(AcDbObjectPointer<AcDbLine>(record->entityIds()[1])->layerId().database(), &drawing);
  EXPECT_EQ(drawing.insert(block, L"a<b", &other), Acad::eInvalidInput);
}

TEST_F(Objects, AttributesEnterAndMoveWithTheirReference) {
  auto* const reference = new AcDbBlockReference({0, 0, 0}, {});
  EXPECT_EQ(reference->appendAttribute(new AcDbAttribute({1, 0, 0}, L"12", L"SIZE")), Acad::eOk);
  const AcDbObjectId id = append(reference);
  AcDbObjectPointer<AcDbBlockReference> opened(id, AcDb::kForWrite);
  opened->transformBy(AcGeMatrix3d::translation({0, 7, 0}));
  std::unique_ptr<AcDbObjectIterator> walk(opened->attributeIterator());
  ASSERT_FALSE(walk->done());
  const AcDbObjectId attribute = walk->objectId();
  EXPECT_TRUE(AcDbObjectPointer<AcDbAttribute>(attribute)->position().isEqualTo({1, 7, 0}));
  opened->erase();
  EXPECT_TRUE(attribute.isErased());
  opened->erase(false);
  EXPECT_FALSE(attribute.isErased());
  const std::unique_ptr<AcRxObject> copy(opened->clone());
  walk.reset(static_cast<AcDbBlockReference&>(*copy).attributeIterator());
  ASSERT_FALSE(walk->done());
  EXPECT_EQ(static_cast<AcDbAttribute*>(walk->entity())->tag(), L"SIZE");
}

TEST_F(Objects, ViewportsFreezeLayersAllOrNone) {
  AcDbViewport viewport;
  AcDbObjectIdArray layers, none;
  layers.append(layer(L"Duct"));
  EXPECT_EQ(viewport.freezeLayersInViewport(none), Acad::eOk);
  EXPECT_EQ(viewport.freezeLayersInViewport(layers), Acad::eOk);
  EXPECT_EQ(viewport.freezeLayersInViewport(layers), Acad::eOk);
  AcDbObjectIdArray frozen;
  viewport.getFrozenLayerList(frozen);
  EXPECT_EQ(frozen.length(), 1);
  layers.append(drawing.modelSpaceId());
  EXPECT_EQ(viewport.thawLayersInViewport(layers), Acad::eInvalidInput);
  EXPECT_TRUE(viewport.isLayerFrozenInViewport(layers[0]));
}

TEST_F(Objects, VariablesCheckTypesRangesAndNames) {
  const auto set = [&](const ACHAR* name, host::HeaderValue value) {
    return host::setHeaderValue(drawing, *host::findHeaderVariable(name), std::move(value));
  };
  const auto text = [&](const ACHAR* name) {
    return std::get<std::wstring>(host::headerValue(drawing, *host::findHeaderVariable(name)));
  };
  EXPECT_EQ(set(L"LUPREC", 9), Acad::eInvalidInput);
  EXPECT_EQ(set(L"LTSCALE", 2), Acad::eOk);
  EXPECT_EQ(set(L"LTSCALE", std::wstring(L"2")), Acad::eInvalidInput);
  EXPECT_EQ(set(L"CECOLOR", std::wstring(L"rgb:1,2,300")), Acad::eInvalidInput);
  EXPECT_EQ(set(L"CECOLOR", std::wstring(L"red")), Acad::eOk);
  EXPECT_EQ(text(L"CECOLOR"), L"1");
  EXPECT_EQ(set(L"CLAYER", std::wstring(L"none")), Acad::eKeyNotFound);
  const AcDbObjectId duct = layer(L"Duct");
  EXPECT_EQ(set(L"CLAYER", std::wstring(L"DUCT")), Acad::eOk);
  AcDbObjectPointer<AcDbLayerTableRecord>(duct, AcDb::kForWrite)->setName(L"Pipe");
  EXPECT_EQ(text(L"CLAYER"), L"Pipe");
}

TEST_F(Objects, FreeDataAndProxiesKeepTextsBytesAndReferences) {
  AcDbXrecord record;
  char bytes[] = "\x01\x02\x03";
  const ads_binary binary{3, bytes};
  ads_name name;
  name[0] = reinterpret_cast<int64_t>(drawing.layerZero().stub()), name[1] = 0;
  resbuf* data = acutBuildList(1, L"text", 310, &binary, 40, 2.5, 340, name, RTNONE);
  EXPECT_EQ(record.setFromRbChain(*data), Acad::eOk);
  const std::unique_ptr<AcRxObject> copy(record.clone());
  resbuf* read = nullptr;
  static_cast<AcDbXrecord&>(*copy).rbChain(&read);
  ASSERT_TRUE(read && read->rbnext && read->rbnext->rbnext && read->rbnext->rbnext->rbnext);
  EXPECT_STREQ(read->resval.rstring, L"text");
  EXPECT_EQ(read->rbnext->resval.rbinary.buf[2], 3);
  EXPECT_EQ(read->rbnext->rbnext->rbnext->resval.rlname[0], name[0]);
  host::GroupList groups;
  groups.append(*data);
  const auto proxy = host::proxyEntity(L"STRANGE", groups);
  const std::unique_ptr<AcRxObject> twin(proxy->clone());
  EXPECT_STREQ(static_cast<AcDbProxyEntity&>(*twin).originalDxfName(), L"STRANGE");
  EXPECT_STREQ(static_cast<AcDbProxyEntity&>(*twin).data().groups->find(1)->resval.rstring, L"text");
  acutRelRb(read);
  data->restype = 1005;  // belongs to extended data
  EXPECT_EQ(record.setFromRbChain(*data), Acad::eInvalidResBuf);
  acutRelRb(data);
}

}  // namespace
