#include "zarbo/jigs/entity_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "brx/db_attributes.h"
#include "platform/desktop/scripted.h"
#include "tests/view/drawn.h"
#include "zarbo/jigs/block_drawing.h"

namespace {

using host::view::DisplayList;
using host::view::RecordOptions;
using testing::ElementsAre;

class EntityListTest : public drawn::Drawing {
 protected:
  void SetUp() override {
    Drawing::SetUp();
    duct = layer(L"Duct", 3);
  }
  void TearDown() override { acdbSetHostWorkingDatabase(nullptr); }

  using Drawing::block;
  /// A block of entities that are on layers already, or come on layer 0.
  AcDbObjectId block(const wchar_t* name, const std::vector<AcDbEntity*>& entities) {
    const AcDbObjectId id = block(name);
    for (AcDbEntity* const each : entities) add(each, each->layerId(), id);
    return id;
  }
  static AcDbAttributeDefinition* constantText(AcDb::TextHorzMode across, AcDb::TextVertMode up) {
    auto* const made = new AcDbAttributeDefinition;
    made->setTag(L"KIND");
    made->setTextString(L"FIXED");
    made->setHeight(1);
    made->setConstant(true);
    made->setHorizontalMode(across);
    made->setVerticalMode(up);
    made->setAlignmentPoint({3, 0, 0});
    return made;
  }
  DisplayList drawn(const AcDbBlockReference& reference, const RecordOptions& options = {}) {
    entityList list;
    AcDbEntityPtrArray entities(0, 8);
    entities.append(const_cast<AcDbBlockReference*>(&reference));
    list.setEntityList(entities);
    return host::view::record(drawing, list, options);
  }
  static RecordOptions forProxies() {
    RecordOptions options;
    options.regenType = kAcGiSaveWorldDrawForProxy;
    return options;
  }

  AcDbObjectId duct;
};

/// Draws one block by the routine, on a layer of the caller's.
class OnLayer : public AcDbEntity {
 public:
  OnLayer(const AcDbBlockReference& reference, AcDbObjectId layer) : reference_(reference), layer_(layer) {}

 protected:
  bool subWorldDraw(AcGiWorldDraw* draw) override {
    drawBlock(reference_, *draw, layer_, false, AcGeMatrix3d::kIdentity);
    return true;
  }

 private:
  const AcDbBlockReference& reference_;
  AcDbObjectId layer_;
};

TEST_F(EntityListTest, AnEmptyListIsToldAndDrawsNothing) {
  entityList list;
  EXPECT_FALSE(list.isSet());
  EXPECT_EQ(list.setEntityList(AcDbEntityPtrArray(0, 8)), 3);
  EXPECT_TRUE(list.isSet());
  EXPECT_TRUE(host::view::record(drawing, list).items.empty());
}

TEST_F(EntityListTest, AListThatIsNotSetIsTakenToTheUser) {
  platform::setDesktop(std::make_unique<platform::ScriptedDesktop>(nullptr));
  const entityList list;
  EXPECT_EQ(dragImage(list), &list);
  const auto boxes = platform::scriptedDesktop()->takeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].box.text, L"Error - You must call setEntityList before calling multiBlockJig::drag()");
}

TEST_F(EntityListTest, NestedBlocksAreDrawnInThePlaceOfTheProduct) {
  const AcDbObjectId inner = block(L"INNER", {new AcDbLine({}, {1, 0, 0})});
  auto* const nested = new AcDbBlockReference({10, 0, 0}, inner);
  nested->setRotation(std::acos(-1.0) / 2);
  AcDbBlockReference outer({100, 0, 0}, block(L"OUTER", {nested}));
  outer.setScaleFactors({2, 2, 2});
  for (const RecordOptions& options : {RecordOptions(), forProxies()}) {
    const DisplayList list = drawn(outer, options);
    ASSERT_EQ(list.points.size(), 2u);
    EXPECT_EQ(list.points[0], (AcGePoint3d{120, 0, 0}));
    EXPECT_EQ(list.points[1], (AcGePoint3d{120, 2, 0}));
  }
}

TEST_F(EntityListTest, APictureForProxiesLeavesTheBlockAsItIs) {
  auto* const line = new AcDbLine({}, {1, 0, 0});
  const AcDbObjectId id = block(L"B", {line});
  const AcDbBlockReference reference({5, 5, 0}, id);
  drawn(reference, forProxies());
  EXPECT_EQ(drawn(reference, forProxies()).points[0], (AcGePoint3d{5, 5, 0}));
  EXPECT_EQ(drawn(reference).points[0], (AcGePoint3d{5, 5, 0}));
}

TEST_F(EntityListTest, WhatLiesOnLayerZeroTakesTheLayerThatIsPassed) {
  auto* const onZero = new AcDbLine({}, {1, 0, 0});
  auto* const onDuct = new AcDbLine({}, {2, 0, 0});
  onDuct->setLayer(duct);
  onDuct->setColorIndex(4);
  const AcDbBlockReference reference({}, block(L"B", {onZero, onDuct}));
  const AcDbObjectId otherId = layer(L"Other", 4);
  OnLayer passed(reference, otherId), plain(reference, {});
  const auto layersOf = [&](AcDbEntity& image) {
    const DisplayList list = host::view::record(drawing, image);
    std::vector<AcDbObjectId> found;
    for (const auto& item : list.items) found.push_back(list.styles[item.style].layer);
    return found;
  };
  EXPECT_THAT(layersOf(passed), ElementsAre(otherId, duct));
  EXPECT_THAT(layersOf(plain), ElementsAre(drawing.layerZero(), duct));
}

/// Where the letters begin tells the attachment: at (13,0) with a width of w, the text starts w, w/2 or 0
/// before.
TEST_F(EntityListTest, ConstantTextsStandUprightByTheirModes) {
  struct Row {
    AcDb::TextHorzMode across;
    AcDb::TextVertMode up;
    double left, base;  // shares of the width and of the height
  };
  const Row rows[] = {
      {AcDb::kTextCenter, AcDb::kTextBase, 0.5, 0}, {AcDb::kTextCenter, AcDb::kTextVertMid, 0.5, 0.5},
      {AcDb::kTextCenter, AcDb::kTextTop, 0.5, 1},  {AcDb::kTextRight, AcDb::kTextBase, 1, 0},
      {AcDb::kTextRight, AcDb::kTextTop, 1, 1},     {AcDb::kTextLeft, AcDb::kTextTop, 0, 1},
      {AcDb::kTextMid, AcDb::kTextBase, 0.5, 0},
  };
  int number = 0;
  for (const Row& row : rows) {
    const std::wstring name = L"B" + std::to_wstring(number++);
    AcDbBlockReference reference({10, 0, 0}, block(name.c_str(), {constantText(row.across, row.up)}));
    reference.setRotation(0.7);
    for (const RecordOptions& options : {RecordOptions(), forProxies()}) {
      const DisplayList list = drawn(reference, options);
      ASSERT_EQ(list.letters.size(), 1u) << number;
      const host::view::Letters& letters = list.letters[0];
      EXPECT_NEAR(letters.x.y, 0, 1e-9) << "upright, however the reference is turned";
      const AcGePoint3d at{10 + 3 * std::cos(0.7), 3 * std::sin(0.7), 0};
      const double width = host::view::inkOf(letters).advance * letters.x.length();
      EXPECT_NEAR(letters.origin.x, at.x - row.left * width, 0.05 * width) << number;
      EXPECT_NEAR(letters.origin.y, at.y - row.base, 0.05) << number;
      EXPECT_EQ(list.styles[0].colour, 256);
    }
  }
}

TEST_F(EntityListTest, BlocksThatMultiplyEndInReasonableTime) {
  AcDbObjectId id = block(L"L0", {new AcDbLine({}, {1, 0, 0})});
  for (int level = 1; level <= 40; ++level) {
    const std::wstring name = L"L" + std::to_wstring(level);
    id = block(name.c_str(), {new AcDbBlockReference({1, 0, 0}, id), new AcDbBlockReference({0, 1, 0}, id)});
  }
  const DisplayList list = drawn(AcDbBlockReference({}, id));
  EXPECT_GT(list.items.size(), 1000u);
  EXPECT_LT(list.items.size(), 1'000'000u);
}

}  // namespace
