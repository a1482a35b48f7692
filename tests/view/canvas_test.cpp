#include "host/view/canvas.h"

#include <random>

#include "brx/db_faces.h"
#include "host/database/header_variables.h"
#include "host/view/picking.h"
#include "tests/view/drawn.h"

namespace {

using drawn::Drawing;
namespace view = drawn::view;

/// Drawings at random, which change at random, and canvases that follow them.
class Canvases : public Drawing {
 protected:
  static constexpr double side = 100;
  /// Wide lines are smoothed a little differently where their picture is cut elsewhere.
  static constexpr int smoothing = 32;

  double number(double low, double high) { return std::uniform_real_distribution<double>(low, high)(random); }
  int whole(int below) { return std::uniform_int_distribution<int>(0, below - 1)(random); }
  AcGePoint3d place() { return {number(0, side), number(0, side), number(-5, 5)}; }

  AcDbEntity* made() {
    const AcGePoint3d at = place();
    switch (whole(8)) {
      case 0:
        return new AcDbCircle(at, {0, 0, 1}, number(0.01, 9));
      case 1:
        return new AcDbArc(at, number(0.1, 9), number(0, 3), number(3, 6));
      case 2:
        return new AcDbText(at, L"Duct", {}, number(0.01, 5), number(0, 6));
      case 3:
        return new AcDbPoint(at);
      case 4:
        return new AcDbBlockReference(at, inserted);
      default:
        return new AcDbLine(at, {at.x + number(-9, 9), at.y + number(-9, 9), at.z});
    }
  }
  void fill(int count) {
    layers = {drawing.clayer(), layer(L"red", 1), layer(L"dashed", 3, linetype(L"DASHED", {0.5, -0.25}))};
    inserted = block(L"inner");
    add(new AcDbLine({0, 0, 0}, {3, 3, 0}), {}, inserted);
    outer = block(L"outer");
    add(new AcDbBlockReference({0, 0, 0}, inserted), {}, outer);
    for (int i = 0; i < count; ++i) addOne();
    // Of the block around the block too.
    entities.push_back(add(new AcDbBlockReference(place(), outer), layers[1]));
  }
  void addOne() {
    AcDbEntity* const entity = made();
    if (whole(10) == 0) entity->setLineWeight(70);
    entities.push_back(add(entity, layers[static_cast<size_t>(whole(3))]));
  }
  AcDbObjectId anyEntity() { return entities[static_cast<size_t>(whole(static_cast<int>(entities.size())))]; }

  /// One change of what is seen.
  void change() {
    switch (whole(9)) {
      case 0:
        return addOne();
      case 1: {
        AcDbObjectPointer<AcDbEntity> entity(anyEntity(), AcDb::kForWrite, true);
        entity->erase(!entity->isErased());
        return;
      }
      case 2: {
        AcDbObjectPointer<AcDbLayerTableRecord> record(layers[static_cast<size_t>(whole(3))],
                                                       AcDb::kForWrite);
        record->setIsOff(!record->isOff());
        return;
      }
      case 3: {
        AcDbObjectPointer<AcDbLayerTableRecord> record(layers[1], AcDb::kForWrite);
        AcCmColor colour;
        colour.setColorIndex(static_cast<Adesk::UInt16>(1 + whole(6)));
        record->setColor(colour);
        return;
      }
      case 4:
        add(new AcDbLine({number(0, 4), 0, 0}, {0, number(0, 4), 0}), {}, inserted);
        return;
      case 5: {
        const auto mode = host::findHeaderVariable(L"PDMODE");
        host::setHeaderValue(drawing, *mode, whole(4));
        return;
      }
      default: {
        AcDbObjectPointer<AcDbEntity> entity(anyEntity(), AcDb::kForWrite);
        if (entity.object())
          entity->transformBy(AcGeMatrix3d::translation({number(-20, 20), number(-20, 20), 0}));
      }
    }
  }

  /// What a canvas that has just been made paints of a scene recorded anew.
  std::vector<std::uint32_t> freshPicture(view::Camera& camera, view::Visual visual = view::Visual::wires) {
    view::Scene anew(drawing, drawing.modelSpaceId());
    view::Canvas canvas(anew, camera);
    canvas.setVisual(visual);
    EXPECT_TRUE(canvas.paint());
    return {canvas.pixels(), canvas.pixels() + canvas.width() * canvas.height()};
  }
  /// Pixels of which a channel differs by more than that.
  static size_t differences(const view::Canvas& canvas, const std::vector<std::uint32_t>& other,
                            int tolerance = smoothing) {
    size_t count = 0;
    for (size_t i = 0; i < other.size(); ++i) {
      int most = 0;
      for (const int shift : {0, 8, 16, 24}) {
        const int channels[] = {static_cast<int>(canvas.pixels()[i] >> shift & 0xFF),
                                static_cast<int>(other[i] >> shift & 0xFF)};
        most = std::max(most, std::abs(channels[0] - channels[1]));
      }
      count += most > tolerance;
    }
    return count;
  }

  std::mt19937 random{7};
  std::vector<AcDbObjectId> layers, entities;
  AcDbObjectId inserted, outer;
};

TEST_F(Canvases, ShowWhatIsRecordedAnewAfterEachChangeAndUndo) {
  fill(400);
  view::Camera camera;
  camera.setSize(300, 200);
  camera.fit(view::PlaneBox{0, 0, side, side});
  view::Canvas canvas(scene(), camera);
  canvas.paint();
  for (int round = 0; round < 24; ++round) {
    const size_t mark = drawing.undoMark();
    for (int i = whole(3); i >= 0; --i) change();
    canvas.paint();
    EXPECT_EQ(differences(canvas, freshPicture(camera)), 0u) << "round " << round;
    if (round % 3 == 0) {
      drawing.undoKeep(mark);
    } else {
      drawing.undoTo(mark);
      canvas.paint();
      EXPECT_EQ(differences(canvas, freshPicture(camera)), 0u) << "taken back, round " << round;
    }
    EXPECT_TRUE(canvas.isWhole());
  }
}

TEST_F(Canvases, RecordNoMoreThanWhatChanged) {
  fill(3000);
  scene().update();
  const size_t before = scene().recordings();
  AcDbObjectPointer<AcDbEntity>(entities[50], AcDb::kForWrite)->setColorIndex(3);
  scene().update();
  EXPECT_LT(scene().recordings() - before, 200u);
  EXPECT_GT(scene().recordings(), before);
  AcDbObjectPointer<AcDbEntity>(entities[50], AcDb::kForWrite)->setColorIndex(4);
  scene().index();
  EXPECT_LT(scene().recordings() - before, 200u) << "looking for entities records nothing";
}

TEST_F(Canvases, FollowTheCameraToTheSamePicture) {
  fill(600);
  view::Camera camera;
  camera.setSize(301, 200);
  camera.fit(view::PlaneBox{20, 20, 70, 70});
  view::Canvas canvas(scene(), camera);
  canvas.paint();
  for (int round = 0; round < 60; ++round) {
    if (round % 20 == 19) camera.zoom(number(0.5, 2), {number(0, 300), number(0, 200)});
    camera.pan(whole(81) - 40, whole(81) - 40);
    if (round % 15 == 14) camera.setSize(200 + whole(200), 150 + whole(100));
    EXPECT_TRUE(canvas.follow() || round % 20 != 19);
    // Cut off at random, as by input.
    int slices = whole(4);
    canvas.paint([&] { return --slices < 0; });
    if (round % 2) continue;
    canvas.paint();
    // A line that lies just between two pixels may go to the other one.
    EXPECT_LT(differences(canvas, freshPicture(camera)), 120u) << "round " << round;
    const std::vector<std::uint32_t> moved(canvas.pixels(),
                                           canvas.pixels() + canvas.width() * canvas.height());
    canvas.repaint();
    canvas.paint();
    // Where letters and wide lines are cut at the border of a strip, single pixels come out otherwise.
    EXPECT_LT(differences(canvas, moved), 16u) << "round " << round;
  }
}

TEST_F(Canvases, ShowAMovedPictureAtOnce) {
  add(new AcDbLine({50, 0, 0}, {50, 100, 0}));
  view::Camera camera;
  camera.setSize(100, 100);
  camera.fit(view::PlaneBox{0, 0, 100, 100});
  view::Canvas canvas(scene(), camera);
  canvas.paint();
  const auto column = [&](int x) { return canvas.pixels()[50 * 100 + x]; };
  const int before = column(50) != column(10) ? 50 : 49;
  ASSERT_NE(column(before), column(10));
  camera.pan(-20, 3);
  EXPECT_TRUE(canvas.follow());
  EXPECT_NE(column(before - 20), column(10));
  camera.zoom(2, {0, 0});
  canvas.follow();
  EXPECT_NE(column(2 * (before - 20)), column(10));
  EXPECT_FALSE(canvas.isWhole());
}

TEST_F(Canvases, PutOverlaysOverAndTakeThemAway) {
  fill(50);
  view::Camera camera;
  camera.setSize(200, 200);
  camera.fit(view::PlaneBox{0, 0, side, side});
  view::Canvas canvas(scene(), camera);
  canvas.paint();
  EXPECT_EQ(canvas.compose(), (view::PixelBox{0, 0, 200, 200}));
  EXPECT_TRUE(canvas.compose().empty());
  view::DisplayList image = view::record(drawing);
  view::Overlay overlay;
  overlay.bands.push_back({{{20, 20}, {60, 20}, {60, 50}, {20, 50}}, 0x3377FF, 1, true, false, 0.2});
  overlay.markers.push_back({view::Marker::end, {80, 80, 0}});
  overlay.hovered = {entities[0]}, overlay.chosen = {entities[1], entities[2]};
  const view::PixelBox touched = canvas.compose(overlay);
  size_t outside = 0, inside = 0;
  for (int y = 0; y < 200; ++y) {
    for (int x = 0; x < 200; ++x) {
      const bool isIn = x >= touched.left && x < touched.right && y >= touched.top && y < touched.bottom;
      if (canvas.shown()[y * 200 + x] != canvas.pixels()[y * 200 + x]) ++(isIn ? inside : outside);
    }
  }
  EXPECT_EQ(outside, 0u);
  EXPECT_GT(inside, 500u);
  canvas.compose();
  EXPECT_EQ(std::memcmp(canvas.shown(), canvas.pixels(), 200 * 200 * 4), 0);
}

TEST_F(Canvases, BearWhatIsHostile) {
  add(new AcDbLine({1e9, 1e9, 0}, {1e9 + 3, 1e9 + 4, 0}));
  add(new AcDbLine({std::nan(""), 0, 0}, {1, 1, 0}));
  add(new AcDbLine({-1e300, -1e300, 0}, {1e300, 1e300, 0}));
  add(new AcDbCircle({0, 0, 0}, {0, 0, 1}, 1e12));
  add(new AcDbText({0, 0, 0}, L"", {}, 0));
  const AcDbObjectId flat = block(L"flat");
  add(new AcDbLine({0, 0, 0}, {1, 1, 0}), {}, flat);
  auto* const reference = new AcDbBlockReference({1, 1, 0}, flat);
  reference->setScaleFactors(AcGeScale3d(1, 0, 0));
  add(reference);
  view::Camera camera;
  for (const int size : {1, 2, 97}) {
    camera.setSize(size, size);
    camera.fit(view::PlaneBox{0, 0, 10, 10});
    view::Canvas canvas(scene(), camera);
    EXPECT_TRUE(canvas.paint()) << size;
    EXPECT_FALSE(camera.zoom(std::nan(""), {0, 0}));
    EXPECT_FALSE(camera.show({0, 0, 0}, 0));
    EXPECT_FALSE(camera.pan(std::nan(""), 0));
    for (const double factor : {1e300, 1e-300}) camera.zoom(factor, {0, 0}), canvas.follow(), canvas.paint();
  }
  EXPECT_EQ(scene().leftOut(), 2u);
  camera.setSize(100, 100);
  camera.fit(view::PlaneBox{1e9, 1e9, 1e9 + 4, 1e9 + 4}, 0.1);
  view::Canvas canvas(scene(), camera);
  canvas.paint();
  const view::PixelPoint middle = camera.toPixel({1e9 + 1.5, 1e9 + 2, 0});
  EXPECT_NE(canvas.pixels()[static_cast<int>(middle.y) * 100 + static_cast<int>(middle.x)],
            canvas.pixels()[5]);
}

TEST_F(Canvases, HideAndShadeFacesAsThePictureOfAFileDoes) {
  const auto face = [&](double z, const ACHAR* name, int colour) {
    add(new AcDbFace({10, 10, z}, {60, 10, z}, {60, 60, z}, {10, 60, z}), layer(name, colour));
  };
  face(0, L"below", 1), face(30, L"above", 5);
  view::Camera camera;
  camera.setSize(160, 120);
  camera.look(view::StandardView::southWest);
  camera.fit(view::PlaneBox{-40, -20, 80, 70});
  view::Canvas canvas(scene(), camera);
  for (const auto visual : {view::Visual::hidden, view::Visual::shaded}) {
    canvas.setVisual(visual);
    canvas.paint();
    camera.pan(3, -2);
    canvas.paint();
    EXPECT_EQ(differences(canvas, freshPicture(camera, visual)), 0u);
  }
}

TEST_F(Canvases, FindByTheIndexWhatAWalkFinds) {
  fill(700);
  const view::Projection sides[] = {view::Projection::plan(), view::Projection::isometric()};
  for (int round = 0; round < 60; ++round) {
    change();
    if (round % 2) scene().update();
    const view::Projection& projection = sides[round % 4 / 2];
    const double x = number(-20, side), y = number(-20, side), size = number(0, 30);
    const view::PlaneBox box{x, y, x + size, y + size};
    const std::vector<AcDbObjectId> found = view::entitiesNear(scene(), projection, box);
    EXPECT_TRUE(
        std::is_sorted(found.begin(), found.end(), [](auto& a, auto& b) { return a.handle() < b.handle(); }));
    for (const AcDbObjectId& id : entities) {
      const view::Recording alone = view::record(drawing, drawing.modelSpaceId(), {&id, 1}, {});
      if (!view::boxOf(alone.list, projection).meets(box) || alone.list.items.empty()) continue;
      EXPECT_TRUE(std::find(found.begin(), found.end(), id) != found.end()) << round;
    }
    EXPECT_LE(found.size(), entities.size());
  }
}

TEST(Cameras, GoToPixelsAndBackFromEverySide) {
  view::Camera camera;
  camera.setSize(640, 480);
  for (int side = 0; side < 10; ++side) {
    camera.look(static_cast<view::StandardView>(side));
    camera.orbit(0.3 * side, 0.1);
    camera.zoom(1.7, {100, 400});
    const view::PixelPoint pixel{123.25, 321.5};
    const AcGePoint3d point = camera.toWorld(pixel);
    EXPECT_NEAR(camera.toPixel(point).x, pixel.x, 1e-9);
    EXPECT_NEAR(camera.toPixel(point).y, pixel.y, 1e-9);
    const view::Ray ray = camera.rayAt(pixel);
    EXPECT_NEAR(camera.toPixel(ray.origin + ray.direction * 5).x, pixel.x, 1e-9);
    const AcGePoint3d fixed = camera.toWorld(pixel);
    camera.zoom(0.4, pixel);
    EXPECT_NEAR(camera.toPixel(fixed).x, pixel.x, 1e-6);
    EXPECT_NEAR(camera.view().towards.dotProduct(camera.view().up), 0, 1e-12);
  }
}

TEST(Cameras, GoBackAndForthByWholeMotions) {
  view::Camera camera;
  const view::View start = camera.view();
  for (int i = 0; i < 5; ++i) camera.pan(10, 0), camera.zoom(1.1, {0, 0});
  camera.settle();
  const view::View moved = camera.view();
  camera.show({5, 5, 0}, 2);
  EXPECT_TRUE(camera.previous());
  EXPECT_EQ(camera.view(), moved);
  EXPECT_TRUE(camera.previous());
  EXPECT_EQ(camera.view(), start);
  EXPECT_FALSE(camera.previous());
  EXPECT_TRUE(camera.next() && camera.next());
  EXPECT_EQ(camera.view().height, 2);
  EXPECT_FALSE(camera.next());
  camera.previous();
  camera.pan(1, 1);
  EXPECT_FALSE(camera.hasNext());
}

}  // namespace
