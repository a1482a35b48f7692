#include <cmath>

#include "brx/db_attributes.h"
#include "brx/db_dictionary.h"
#include "host/database/palette.h"
#include "host/view/clip.h"
#include "host/view/dashes.h"
#include "tests/view/drawn.h"

namespace {

using drawn::Drawing;
using drawn::view::Ink;
using drawn::view::Item;
namespace view = drawn::view;

constexpr double quarter = 1.570796326794896619;

class Lists : public Drawing {
 protected:
  view::DisplayList recorded() { return view::record(drawing); }
  static view::Style styleOf(const view::DisplayList& list, size_t item) {
    return list.styles[list.items.at(item).style];
  }
};

TEST_F(Lists, ResolveLayersAndBlocksOnEveryLevel) {
  const AcDbObjectId dashed = linetype(L"DASHED", {0.5, -0.25});
  const AcDbObjectId red = layer(L"red", 1), green = layer(L"green", 3, dashed), off = layer(L"off", 5),
                     frozen = layer(L"frozen", 6);
  AcDbObjectPointer<AcDbLayerTableRecord>(off, AcDb::kForWrite)->setIsOff(true);
  AcDbObjectPointer<AcDbLayerTableRecord>(frozen, AcDb::kForWrite)->setIsFrozen(true);
  const AcDbObjectId inner = block(L"inner"), outer = block(L"outer");
  auto* const onZero = new AcDbLine({0, 0, 0}, {1, 0, 0});
  auto* const byBlock = new AcDbLine({0, 1, 0}, {1, 1, 0});
  byBlock->setColorIndex(0), byBlock->setLinetype(drawing.byBlockLinetype()), byBlock->setLineWeight(-2);
  add(onZero, drawing.layerZero(), inner);
  add(byBlock, red, inner);
  add(new AcDbLine({0, 2, 0}, {1, 2, 0}), off, inner);
  add(new AcDbLine({0, 3, 0}, {1, 3, 0}), frozen, inner);
  auto* const middle = new AcDbBlockReference({0, 0, 0}, inner);
  middle->setColorIndex(0), middle->setLineWeight(50);
  add(middle, drawing.layerZero(), outer);
  auto* const placed = new AcDbBlockReference({10, 0, 0}, outer);
  AcCmColor exact;
  exact.setRGB(1, 2, 3);
  placed->setColor(exact);
  add(placed, green);
  add(new AcDbBlockReference({20, 0, 0}, outer), off);
  add(new AcDbBlockReference({30, 0, 0}, outer), frozen);

  const view::DisplayList list = recorded();
  // On a layer that is off, what lies on layer 0 vanishes and what has its own layer stays.
  ASSERT_EQ(list.items.size(), 3U);
  EXPECT_EQ(styleOf(list, 0).ink, (Ink{Ink::exact, 0x00FF00}));
  EXPECT_GE(styleOf(list, 0).pattern, 0);
  EXPECT_EQ(styleOf(list, 1).ink, (Ink{Ink::exact, 0x010203}));
  EXPECT_EQ(styleOf(list, 1).lineWeight, 50);
  EXPECT_GE(styleOf(list, 1).pattern, 0);
  EXPECT_EQ(list.points[list.items[1].first].x, 10);
  EXPECT_EQ(styleOf(list, 2).ink, (Ink{Ink::exact, 0x0000FF}));
}

/// Sets a layer and draws an entity that is in no drawing, as custom entities do with their parts.
class Holder final : public AcDbEntity {
 public:
  explicit Holder(AcDbEntity* part) : part_(part) {}

 protected:
  bool subWorldDraw(AcGiWorldDraw* draw) override {
    draw->subEntityTraits().setLayer(layerId());
    return draw->geometry().draw(part_);
  }

 private:
  AcDbEntity* part_;
};

TEST_F(Lists, PartsOutsideTheDrawingGoToTheLayerThatTheirHolderSets) {
  const AcDbObjectId red = layer(L"red", 1), green = layer(L"green", 3);
  AcDbLine part({0, 0, 0}, {1, 0, 0});
  part.setLayer(green);
  add(new Holder(&part), red);
  const view::DisplayList list = recorded();
  ASSERT_EQ(list.items.size(), 1U);
  EXPECT_EQ(styleOf(list, 0).ink, (Ink{Ink::exact, 0xFF0000}));
}

/// Draws one chord as long as it may be off.
class Chord final : public AcDbEntity {
 protected:
  bool subWorldDraw(AcGiWorldDraw* draw) override {
    const AcGePoint3d ends[] = {{0, 0, 0}, {draw->deviation(), 0, 0}};
    return draw->geometry().polyline(2, ends);
  }
};

TEST_F(Lists, TellTheDeviationInTheWorldsUnits) {
  EXPECT_EQ(recorded().deviation, 0);
  const AcDbObjectId curved = block(L"curved");
  add(new Chord, {}, curved);
  auto* const placed = new AcDbBlockReference({0, 0, 0}, curved);
  placed->setScaleFactors({20, 20, 20});
  add(placed);
  const view::DisplayList list = view::record(drawing, {}, 0.5);
  EXPECT_EQ(list.deviation, 0.5);
  EXPECT_NEAR(list.points.at(1).x, 0.5, 1e-12);
}

TEST_F(Lists, FollowTheDrawOrderAndTheScaleOfLinetypes) {
  add(new AcDbLine({1, 0, 0}, {1, 1, 0}));
  const AcDbObjectId second = add(new AcDbLine({2, 0, 0}, {2, 1, 0}));
  {
    AcDbObjectPointer<AcDbLine> line(second, AcDb::kForWrite);
    line->setLinetype(linetype(L"DASHED", {0.5, -0.25})), line->setLinetypeScale(3);
  }
  drawing.setLtscale(2);
  AcDbSortentsTable* table = nullptr;
  AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId(), AcDb::kForWrite);
  ASSERT_EQ(space->getSortentsTable(table, AcDb::kForWrite, true), Acad::eOk);
  AcDbObjectIdArray ids;
  ids.append(second);
  EXPECT_EQ(table->moveToBottom(ids), Acad::eOk);
  table->close(), space.close();
  const view::DisplayList list = recorded();
  ASSERT_EQ(list.items.size(), 2U);
  EXPECT_EQ(list.points[list.items[0].first].x, 2);
  EXPECT_EQ(styleOf(list, 0).patternScale, 6);
  EXPECT_EQ(list.points[list.items[1].first].x, 1);
}

TEST_F(Lists, ShowAttributesInPlaceOfTheirDefinitions) {
  const AcDbObjectId tagged = block(L"tagged");
  auto* const definition = new AcDbAttributeDefinition;
  definition->setHeight(1), definition->setTag(L"ROOM");
  add(definition, {}, tagged);
  auto* const placed = new AcDbBlockReference({5, 5, 0}, tagged);
  auto* const attribute = new AcDbAttribute({5, 5, 0}, L"12", L"ROOM");
  attribute->setHeight(1);
  placed->appendAttribute(attribute);
  add(placed);
  const view::DisplayList list = recorded();
  ASSERT_EQ(list.letters.size(), 1U);
  EXPECT_EQ(list.letters[0].letters, L"12");
  EXPECT_EQ(list.letters[0].origin.x, 5);
}

TEST_F(Lists, KeepCurvesExactUnderUnevenScales) {
  const AcDbObjectId round = block(L"round");
  add(new AcDbCircle({0, 0, 0}, {0, 0, 1}, 1), {}, round);
  auto* const placed = new AcDbBlockReference({5, 5, 0}, round);
  placed->setScaleFactors({3, 1, 1}), placed->setRotation(quarter);
  add(placed);
  const view::DisplayList list = recorded();
  ASSERT_EQ(list.arcs.size(), 1U);
  const view::PlaneBox box = boxOf(list, view::Projection::plan());
  EXPECT_NEAR(box.left, 4, 1e-9);
  EXPECT_NEAR(box.top, 8, 1e-9);
}

TEST_F(Lists, LeaveOutWhatIsNotFinite) {
  const double nan = std::nan("");
  add(new AcDbLine({0, 0, 0}, {nan, 1, 0}));
  add(new AcDbCircle({0, 0, 0}, {0, 0, 1}, INFINITY));
  add(new AcDbText({nan, 0, 0}, L"x", {}, 1));
  add(new AcDbLine({0, 0, 0}, {1, 1, 0}));
  const view::DisplayList list = recorded();
  EXPECT_EQ(list.items.size(), 1U);
  EXPECT_EQ(list.leftOut, 3U);
}

TEST(Boxes, OfArcsEndWhereTheCurveDoes) {
  view::DisplayList list;
  list.arcs = {{{0, 0, 0}, {2, 0, 0}, {0, 2, 0}, quarter},
               {{0, 0, 0}, {2, 0, 0}, {0, 2, 0}, 3 * quarter},
               {{0, 0, 0}, {0, 2, 0}, {2, 0, 0}, -quarter}};
  const view::PlaneBox expected[] = {{0, 0, 2, 2}, {-2, -2, 2, 2}, {-2, 0, 0, 2}};
  for (std::uint32_t i = 0; i < 3; ++i) {
    const view::PlaneBox box = boxOf(list, {Item::arc, 0, i, 1}, view::Projection::plan());
    EXPECT_NEAR(box.left, expected[i].left, 1e-9) << i;
    EXPECT_NEAR(box.right, expected[i].right, 1e-9) << i;
    EXPECT_NEAR(box.bottom, expected[i].bottom, 1e-9) << i;
    EXPECT_NEAR(box.top, expected[i].top, 1e-9) << i;
  }
  const auto iso = view::Projection::isometric();
  for (const AcGeVector3d& axis : {AcGeVector3d{1, 0, 0}, AcGeVector3d{0, 1, 0}, AcGeVector3d{0, 0, 1}}) {
    EXPECT_NEAR(std::hypot(iso(axis).x, iso(axis).y), std::sqrt(2.0 / 3), 1e-12);
  }
}

TEST(Dashes, BeginAndEndWithADash) {
  using Parts = std::vector<std::pair<double, double>>;
  EXPECT_EQ(view::dashesOf({2, -1}, 1, 8, 100), (Parts{{0, 2}, {3, 5}, {6, 8}}));
  EXPECT_EQ(view::dashesOf({2, -1}, 1, 10, 100), (Parts{{0, 1.5}, {2.5, 4.5}, {5.5, 7.5}, {8.5, 10}}));
  EXPECT_EQ(view::dashesOf({0, -1}, 2, 5, 100), (Parts{{0, 0}, {2.5, 2.5}, {5, 5}}));
  EXPECT_EQ(view::dashesOf({2, -1}, 1, 2.9, 100), Parts{});
  EXPECT_EQ(view::dashesOf({2, -1}, 1e-9, 10, 100), Parts{});
  EXPECT_EQ(view::dashesOf({0, 0}, 1, 10, 100), Parts{});
}

TEST(Clipping, KeepsWhatLiesInside) {
  const view::PlaneBox box{0, 0, 10, 10};
  view::PlanePoint a{-5, 5}, b{15, 5};
  EXPECT_TRUE(clipSegment(box, a, b) && a.x == 0 && b.x == 10);
  view::PlanePoint c{-5, 8}, d{5, 18};
  EXPECT_FALSE(clipSegment(box, c, d));
  EXPECT_EQ(clipPolygon(box, {{-5, -5}, {15, -5}, {15, 15}, {-5, 15}}).size(), 4U);
  EXPECT_TRUE(clipPolygon(box, {{20, 20}, {30, 20}, {30, 30}}).empty());
}

TEST(Palette, HasTheUsualColours) {
  const std::pair<unsigned, std::uint32_t> colours[] = {{1, 0xFF0000},  {30, 0xFF7F00},  {41, 0xFFDF7F},
                                                        {92, 0x00A500}, {174, 0x00007F}, {253, 0x828282}};
  for (const auto& [index, rgb] : colours) EXPECT_EQ(host::colourOfIndex(index), rgb) << index;
}

}  // namespace
