#include "host/database/header_variables.h"
#include "tests/view/drawn.h"

namespace {

using drawn::Drawing;
using drawn::Pixels;
namespace view = drawn::view;

constexpr std::uint32_t white = 0xFFFFFF, black = 0x000000, dark = 0x212830;

class Pictures : public Drawing {
 protected:
  /// One pixel for each unit, the origin in the lower left corner.
  static view::PictureSettings window(int width, int height) {
    view::PictureSettings settings;
    settings.width = width, settings.height = height;
    settings.window = view::PlaneBox{0, 0, static_cast<double>(width), static_cast<double>(height)};
    return settings;
  }
  Pixels painted(const view::PictureSettings& settings) { return Pixels(scene(), settings); }
};

TEST_F(Pictures, ShowLinesSharpOnBothGrounds) {
  add(new AcDbLine({10, 50, 0}, {90, 50, 0}));
  add(new AcDbLine({50.3, 10, 0}, {50.3, 90, 0}), layer(L"red", 1));
  view::PictureSettings settings = window(100, 100);
  const Pixels light = painted(settings);
  EXPECT_EQ(light.at(30.5, 49.5), black);
  EXPECT_EQ(light.at(30.5, 48.5), white);
  EXPECT_EQ(light.at(30.5, 50.5), white);
  EXPECT_EQ(light.at(50.5, 20.5), 0xFF0000U);
  EXPECT_EQ(light.at(49.5, 20.5), white);
  settings.ground = view::Ground::dark;
  const Pixels night = painted(settings);
  EXPECT_EQ(night.at(30.5, 49.5), white);
  EXPECT_EQ(night.at(5.5, 5.5), dark);
}

TEST_F(Pictures, ShowLinetypesWeightsAndFills) {
  auto* const dashed = new AcDbLine({0, 80, 0}, {100, 80, 0});
  dashed->setLinetype(linetype(L"DASHED", {20, -20}));
  add(dashed);
  auto* const wide = new AcDbLine({10, 50, 0}, {90, 50, 0});
  wide->setLineWeight(211);
  add(wide);
  const Pixels pixels = painted(window(100, 100));
  // Two and a half patterns: a half at each end.
  const bool expected[] = {true, false, true, false, true, true};
  for (int i = 0; i < 5; ++i) EXPECT_EQ(pixels.at(10 + 20 * i, 79.5) == black, expected[i]) << i;
  // 2.11 mm at 96 dots per inch are 8 pixels.
  EXPECT_NEAR(pixels.inked(30, 40, 70, 60), 8.0 / 20, 0.05);
}

TEST_F(Pictures, ShowWidePolylinesWithFullCorners) {
  auto* const line = new AcDbPolyline;
  line->addVertexAt(0, {10, 10}, 0, 10, 10), line->addVertexAt(1, {50, 10}, 0, 10, 10);
  line->addVertexAt(2, {50, 50}, 1, 10, 0), line->addVertexAt(3, {50, 90});
  add(line);
  const Pixels pixels = painted(window(100, 100));
  for (const auto& [x, y] : {std::pair{12, 6}, {30, 14}, {53, 7}, {46, 40}, {70, 70}}) {
    EXPECT_EQ(pixels.at(x, y), black) << x << "," << y;
  }
  for (const auto& [x, y] : {std::pair{30, 17}, {57, 7}, {40, 40}, {60, 70}}) {
    EXPECT_EQ(pixels.at(x, y), white) << x << "," << y;
  }
}

TEST_F(Pictures, ShowPointsAsTheDrawingSays) {
  add(new AcDbPoint({50, 50, 0}));
  const auto shown = [&](int mode, double size) {
    const auto set = [this](const wchar_t* name, host::HeaderValue value) {
      EXPECT_EQ(host::setHeaderValue(drawing, *host::findHeaderVariable(name), value), Acad::eOk);
    };
    set(L"PDMODE", mode), set(L"PDSIZE", size);
    return painted(window(100, 100));
  };
  EXPECT_EQ(shown(1, 20.0).inked(0, 0, 100, 100), 0);
  EXPECT_NEAR(shown(0, 20.0).inked(0, 0, 100, 100), 1e-4, 9e-4);
  EXPECT_NE(shown(2, 20.0).at(68, 49.5), white);
  EXPECT_NE(shown(32, 20.0).at(60, 50), white);
  EXPECT_NE(shown(65, 0.0).at(52.5, 50), white);
}

TEST_F(Pictures, ShowArcsWhereTheyAre) {
  add(new AcDbCircle({50, 50, 0}, {0, 0, 1}, 40));
  add(new AcDbArc({50, 50, 0}, 20, 0, 1.5707963));
  const Pixels pixels = painted(window(100, 100));
  for (int degrees = 5; degrees < 360; degrees += 10) {
    const double c = std::cos(degrees * 0.0174532925), s = std::sin(degrees * 0.0174532925);
    EXPECT_NE(pixels.at(50 + 40 * c, 50 + 40 * s), white) << degrees;
    EXPECT_EQ(pixels.at(50 + 37 * c, 50 + 37 * s), white) << degrees;
    EXPECT_EQ(pixels.at(50 + 20 * c, 50 + 20 * s) != white, degrees < 90) << degrees;
  }
}

TEST_F(Pictures, ShowLettersInTheirSize) {
  add(new AcDbText({20, 30, 0}, L"HHH", {}, 40));
  const Pixels pixels = painted(window(200, 100));
  EXPECT_GT(pixels.inked(20, 31, 100, 69), 0.1);
  EXPECT_EQ(pixels.inked(0, 71, 200, 99), 0);
  EXPECT_EQ(pixels.inked(0, 0, 200, 28), 0);
  // The first stem of the first letter, filled and as high as the text.
  double stem = 0;
  while (pixels.at(20.5 + stem, 50.5) == white && stem < 40) ++stem;
  EXPECT_LT(stem, 12);
  for (int y = 33; y < 68; y += 5) EXPECT_NE(pixels.at(21.5 + stem, y), white) << y;
}

TEST_F(Pictures, HideWhatLiesBehindAMask) {
  add(new AcDbLine({0, 50, 0}, {200, 50, 0}));
  auto* const text = new AcDbMText;
  text->setTextHeight(20), text->setContents(L"H"), text->setLocation({100, 50, 0});
  text->setAttachment(AcDbMText::kMiddleCenter);
  text->setBackgroundFill(true), text->setUseBackgroundColor(true), text->setBackgroundScaleFactor(2);
  add(text);
  for (const auto ground : {view::Ground::white, view::Ground::dark}) {
    view::PictureSettings settings = window(200, 100);
    settings.ground = ground;
    const Pixels pixels = painted(settings);
    const std::uint32_t empty = pixels.at(5.5, 5.5);
    EXPECT_NE(pixels.at(60, 49.5), empty);
    EXPECT_EQ(pixels.at(75, 49.5), empty);
    EXPECT_EQ(pixels.at(125, 49.5), empty);
  }
}

TEST_F(Pictures, FitAllInAndShowTheHeightFromTheSide) {
  add(new AcDbLine({1e6, 1e6, 0}, {1e6, 1e6, 100}));
  view::PictureSettings settings;
  settings.width = 100, settings.height = 100;
  settings.projection = view::Projection::isometric();
  const view::PlaneBox shown = view::shownWindow(scene(), settings);
  EXPECT_NEAR(shown.top - shown.bottom, 100 * std::sqrt(2.0 / 3) / 0.94, 1e-6);
  EXPECT_EQ(Pixels(scene(), settings).at((shown.left + shown.right) / 2, (shown.bottom + shown.top) / 2),
            black);
}

TEST_F(Pictures, BearHugeAndHostileShapes) {
  add(new AcDbLine({-1e12, -1e12, 0}, {1e12, 1e12, 0}));
  add(new AcDbCircle({0, -1e9, 0}, {0, 0, 1}, 1e9 + 50));
  add(new AcDbText({0, 0, 0}, L"A", {}, 1e9));
  const Pixels pixels = painted(window(100, 100));
  EXPECT_NE(pixels.at(30.5, 30.5), white);
  EXPECT_NE(pixels.at(80.5, 49.5), white);
  AcDbDatabase empty;
  std::string problem;
  EXPECT_NE(view::pictureBytes(view::Scene::of(empty), {}, view::PictureKind::png, problem), "");
  view::PictureSettings tooLarge;
  tooLarge.width = 1000000;
  EXPECT_EQ(view::pictureBytes(view::Scene::of(empty), tooLarge, view::PictureKind::png, problem), "");
}

TEST_F(Pictures, AreWrittenByTheEndingAsAWhole) {
  add(new AcDbText({0, 0, 0}, L"Text", {}, 10));
  const auto folder = std::filesystem::temp_directory_path() / "zarbo_pictures_test";
  std::filesystem::create_directories(folder);
  std::string problem;
  const std::pair<const char*, const char*> kinds[] = {
      {"a.PNG", "\x89PNG"}, {"a.svg", "<?xml"}, {"a.pdf", "%PDF"}};
  for (const auto& [name, start] : kinds) {
    ASSERT_TRUE(view::writePicture(scene(), {}, (folder / name).string(), problem)) << problem;
    std::ifstream file(folder / name, std::ios::binary);
    std::string bytes(std::istreambuf_iterator<char>(file), {});
    EXPECT_TRUE(bytes.starts_with(start)) << name;
  }
  EXPECT_FALSE(view::writePicture(scene(), {}, (folder / "a.gif").string(), problem));
  EXPECT_FALSE(view::writePicture(scene(), {}, (folder / "none" / "a.png").string(), problem));
  std::filesystem::remove_all(folder);
}

}  // namespace
