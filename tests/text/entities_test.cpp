#include <gtest/gtest.h>

#include "brx/db_database.h"
#include "brx/db_text.h"

namespace {

constexpr double quarter = 1.570796326794896619;

class TextEntities : public testing::Test {
 protected:
  void SetUp() override { acdbSetHostWorkingDatabase(&drawing); }
  AcDbDatabase drawing;
};

AcDbExtents boxOf(const AcDbEntity& entity) {
  AcDbExtents box;
  EXPECT_EQ(entity.getGeomExtents(box), Acad::eOk);
  return box;
}

TEST_F(TextEntities, StandAtTheirAlignmentPoint) {
  const AcGePoint3d at{100, 50, 0};
  const AcDbText plain({0, 0, 0}, L"HHHH", {}, 2.5);
  const double width = boxOf(plain).maxPoint().x;
  EXPECT_NEAR(boxOf(plain).maxPoint().y, 2.5, 1e-6);
  const struct {
    AcDb::TextHorzMode horizontal;
    AcDb::TextVertMode vertical;
    double x, y;  // of the box's middle from the point, in shares of its size
  } cases[] = {
      {AcDb::kTextCenter, AcDb::kTextBase, 0, 0.5},
      {AcDb::kTextRight, AcDb::kTextTop, -0.5, -0.5},
      {AcDb::kTextLeft, AcDb::kTextVertMid, 0.5, 0},
      {AcDb::kTextMid, AcDb::kTextBase, 0, 0},
  };
  // Backward and upside-down texts stand mirrored at that point.
  for (int turned = 0; turned < 4; ++turned) {
    for (const auto& each : cases) {
      AcDbText text({0, 0, 0}, L"HHHH", {}, 2.5);
      text.mirrorInX(turned & 1), text.mirrorInY(turned & 2);
      text.setHorizontalMode(each.horizontal), text.setVerticalMode(each.vertical);
      text.setAlignmentPoint(at);
      const double x = turned & 1 ? -each.x : each.x, y = turned & 2 ? -each.y : each.y;
      const auto check = [&](const AcGePoint3d& point) {
        const AcDbExtents box = boxOf(text);
        EXPECT_NEAR((box.minPoint().x + box.maxPoint().x) / 2, point.x + x * width, 0.5) << &each - cases;
        EXPECT_NEAR((box.minPoint().y + box.maxPoint().y) / 2, point.y + y * 2.5, 1e-6) << &each - cases;
        EXPECT_NEAR(text.position().y, turned & 2 ? box.maxPoint().y : box.minPoint().y, 1e-6);
      };
      check(at);
      EXPECT_EQ(text.transformBy(AcGeMatrix3d::translation({7, 8, 0})), Acad::eOk);
      EXPECT_TRUE(text.alignmentPoint().isEqualTo({107, 58, 0}));
      check({107, 58, 0});
    }
  }
}

TEST_F(TextEntities, AreBackwardAndUpsideDownAboutTheirAlignmentPoint) {
  const AcGePoint3d at{100, 50, 0};
  for (const auto horizontal : {AcDb::kTextLeft, AcDb::kTextCenter, AcDb::kTextRight}) {
    for (const auto vertical : {AcDb::kTextBase, AcDb::kTextTop}) {
      AcDbText text({0, 0, 0}, L"HHE", {}, 2.5);
      text.setHorizontalMode(horizontal), text.setVerticalMode(vertical);
      text.setAlignmentPoint(at), text.setPosition(at);
      const AcDbExtents plain = boxOf(text);
      text.mirrorInX(true), text.mirrorInY(true);
      const AcDbExtents mirrored = boxOf(text);
      // Turned by half a turn about the point.
      EXPECT_TRUE(mirrored.minPoint().isEqualTo(at - (plain.maxPoint() - at), AcGeTol().setEqualPoint(1e-6)));
      EXPECT_TRUE(mirrored.maxPoint().isEqualTo(at - (plain.minPoint() - at), AcGeTol().setEqualPoint(1e-6)));
      AcGeMatrix3d mirror;
      mirror(0, 0) = -1;
      text.transformBy(mirror);
      EXPECT_NEAR(boxOf(text).minPoint().x, -mirrored.maxPoint().x, 0.5);
      EXPECT_NEAR(boxOf(text).minPoint().y, mirrored.minPoint().y, 1e-6);
    }
  }
  AcDbText plain({3, 4, 0}, L"HHE", {}, 2.5);
  plain.transformBy(AcGeMatrix3d::translation({10, 10, 0}));
  EXPECT_TRUE(plain.alignmentPoint().isEqualTo({0, 0, 0})) << "means nothing for it, and stays";
}

TEST_F(TextEntities, FillTheWayBetweenTwoPoints) {
  for (const auto mode : {AcDb::kTextAlign, AcDb::kTextFit}) {
    AcDbText text({0, 0, 0}, L"HHHH", {}, 1);
    text.setAlignmentPoint({30, 40, 0});
    text.setHorizontalMode(mode);
    EXPECT_NEAR(text.rotation(), std::atan2(4, 3), 1e-9);
    EXPECT_EQ(mode == AcDb::kTextFit ? text.height() : text.widthFactor(), 1);
    EXPECT_GT(mode == AcDb::kTextFit ? text.widthFactor() : text.height(), 5);
    text.setTextString(L"HHHHHHHH");
    EXPECT_NEAR(boxOf(text).maxPoint().y, 40 + (mode == AcDb::kTextFit ? 0.6 : 3), 3);
    const AcDbExtents forward = boxOf(text);
    text.mirrorInX(true);
    EXPECT_NEAR(boxOf(text).minPoint().x, forward.minPoint().x, 1);
    EXPECT_NEAR(boxOf(text).maxPoint().x, forward.maxPoint().x, 1);
  }
}

TEST_F(TextEntities, StayReadableWhenMirrored) {
  AcGeMatrix3d mirror;
  mirror(0, 0) = -1;
  AcDbText text({10, 5, 0}, L"HH", {}, 2);
  const AcDbExtents before = boxOf(text);
  EXPECT_EQ(text.transformBy(mirror), Acad::eOk);
  EXPECT_NEAR(text.rotation(), 0, 1e-12);
  EXPECT_NEAR(boxOf(text).maxPoint().x, -before.minPoint().x, 0.5);
  AcDbMText lines;
  lines.setLocation({10, 5, 0});
  lines.setContents(L"left");
  lines.transformBy(mirror);
  EXPECT_EQ(lines.attachment(), AcDbMText::kTopRight);
  EXPECT_TRUE(lines.direction().isEqualTo({1, 0, 0}) && lines.location().isEqualTo({-10, 5, 0}));
  AcGeMatrix3d down;
  down(1, 1) = -1;
  lines.transformBy(down);
  EXPECT_EQ(lines.attachment(), AcDbMText::kBottomRight);
  lines.transformBy(AcGeMatrix3d::rotation(quarter, {0, 0, 1}));
  EXPECT_NEAR(lines.rotation(), quarter, 1e-12);
}

TEST_F(TextEntities, MeasureParagraphs) {
  AcDbMText text;
  text.setTextHeight(3);
  EXPECT_EQ(text.actualHeight(), 0);
  text.setContents(L"HH\\PHH");
  EXPECT_NEAR(text.actualHeight(), 8, 1e-9);
  EXPECT_EQ(text.descent(), 0);
  EXPECT_NEAR(text.ascent(), 3, 1e-6);
  const double width = text.actualWidth();
  text.setContents(L"HH HH");
  text.setWidth(width * 1.5);
  EXPECT_NEAR(text.actualWidth(), width, 1e-9);
  EXPECT_NEAR(text.actualHeight(), 8, 1e-9);
  text.setAttachment(AcDbMText::kMiddleCenter);
  text.setNormal({0, -1, 0}), text.setDirection({1, 0, 0});
  const AcDbExtents box = boxOf(text);
  EXPECT_NEAR(box.minPoint().z, -4, 1e-6);
  EXPECT_NEAR(box.maxPoint().z, 4, 1e-6);
  EXPECT_EQ(text.setBackgroundScaleFactor(0.5), Acad::eInvalidInput);
}

TEST_F(TextEntities, ExplodeIntoLinesOfOneFormat) {
  AcDbMText text;
  text.setTextHeight(2);
  text.setContents(L"one {\\C1;\\Ltwo}\\Pthree \\S1/2;");
  AcDbVoidPtrArray pieces;
  ASSERT_EQ(text.explode(pieces), Acad::eOk);
  std::vector<std::wstring> texts;
  int lines = 0;
  for (void* each : pieces) {
    auto* const entity = static_cast<AcDbEntity*>(each);
    if (const AcDbText* const letters = AcDbText::cast(entity)) texts.push_back(letters->textString());
    if (AcDbLine::cast(entity)) ++lines;
    EXPECT_EQ(entity->colorIndex(), texts.size() == 2 && lines == 0 ? 1 : 256);
    delete entity;
  }
  EXPECT_EQ(texts, (std::vector<std::wstring>{L"one ", L"%%utwo", L"three ", L"1", L"2"}));
  EXPECT_EQ(lines, 1);
}

}  // namespace
