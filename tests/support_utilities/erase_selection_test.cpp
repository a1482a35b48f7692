#include <gtest/gtest.h>

#include "brx/db_block.h"
#include "brx/db_calls.h"
#include "brx/db_database.h"
#include "brx/editor_input.h"
#include "host/documents/documents.h"
#include "zarbo/support/current_drawing.h"

namespace {

TEST(EraseSelection, TakesAllMembersAndNothingElse) {
  host::documents().create(L"A.dwg");
  AcDbObjectId ids[3];
  for (AcDbObjectId& id : ids) {
    AcDbObjectPointer<AcDbBlockTableRecord> space(currentDatabase()->modelSpaceId(), AcDb::kForWrite);
    auto* const line = new AcDbLine({0, 0, 0}, {1, 0, 0});
    ASSERT_EQ(space->appendAcDbEntity(id, line), Acad::eOk);
    line->close();
  }
  ads_name entity, set;
  acdbGetAdsName(entity, ids[0]);
  ASSERT_EQ(acedSSAdd(entity, nullptr, set), RTNORM);
  acdbGetAdsName(entity, ids[2]);
  ASSERT_EQ(acedSSAdd(entity, set, set), RTNORM);
  eraseSelection(set);
  acedSSFree(set);
  EXPECT_TRUE(ids[0].isErased());
  EXPECT_FALSE(ids[1].isErased());
  EXPECT_TRUE(ids[2].isErased());
  host::documents().closeAll();
  host::documents().discardClosed();
}

}  // namespace
