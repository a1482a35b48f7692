// What a window does with 100,000 and 1,000,000 entities: the first picture, panning and zooming, one changed
// entity to its picture, a pick and a snap, as rows for bench/all. Whole pictures stand beside bare lines by
// the drawing library, as many as the drawing has entities; frames and picks have aims in milliseconds.
#include <cairo.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <random>
#include <string>

#include "bench/rows.h"
#include "brx/db_block.h"
#include "brx/db_text.h"
#include "host/editor/search.h"
#include "host/editor/snaps.h"
#include "host/view/canvas.h"

namespace {

namespace view = host::view;
constexpr int width = 1600, height = 1200;

using bench::Times;

/// Of some rounds, what one of `runs` takes in the mean, in milliseconds.
Times timed(int rounds, const std::function<void()>& work, int runs = 1) {
  Times times;
  for (int round = 0; round < rounds; ++round) {
    times.push_back(bench::inUnit("ms", bench::secondsOf([&] {
                                    for (int run = 0; run < runs; ++run) work();
                                  }),
                                  runs));
  }
  return times;
}

/// Beside a yardstick, or with an aim in milliseconds.
void beside(const std::string& what, const std::string& yardstick, const Times& theirs, const Times& ours) {
  bench::printRow(what, "ms", yardstick, theirs, ours, 0);
}
void within(const std::string& what, double aim, const Times& ours) {
  bench::printRow(what, "ms", "", {}, ours, aim);
}

/// Mostly lines, as drawings have them, at one density whatever their number.
double fill(AcDbDatabase& drawing, int count) {
  const double side = std::sqrt(static_cast<double>(count)) * 10;
  std::mt19937 random(1);
  std::uniform_real_distribution<double> place(0, side), turn(0, 6.28);
  AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId(), AcDb::kForWrite);
  for (int i = 0; i < count; ++i) {
    const AcGePoint3d at{place(random), place(random), 0};
    const double angle = turn(random);
    AcDbEntity* entity = nullptr;
    switch (i % 10) {
      case 0:
        entity = new AcDbCircle(at, {0, 0, 1}, 1 + angle);
        break;
      case 1:
        entity = new AcDbArc(at, 5, angle, angle + 2);
        break;
      case 2:
        entity = new AcDbText(at, L"Duct 250", {}, 2, angle);
        break;
      default:
        entity = new AcDbLine(at, {at.x + 15 * std::cos(angle), at.y + 15 * std::sin(angle), 0});
    }
    entity->setLayer(drawing.layerZero());
    entity->setColorIndex(static_cast<Adesk::UInt16>(1 + i / 10 % 9));
    space->appendAcDbEntity(entity);
    entity->close();
  }
  return side;
}

Times bareLines(int count) {
  cairo_surface_t* const surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height);
  cairo_t* const cairo = cairo_create(surface);
  cairo_set_line_width(cairo, 1);
  std::mt19937 random(1);
  std::uniform_real_distribution<double> place(0, height), way(-6, 6);
  const Times times = timed(3, [&] {
    for (int i = 0; i < count; ++i) {
      const double x = place(random), y = place(random);
      cairo_move_to(cairo, x, y), cairo_line_to(cairo, x + way(random), y + way(random));
      cairo_stroke(cairo);
    }
  });
  cairo_destroy(cairo), cairo_surface_destroy(surface);
  return times;
}

void measure(int count) {
  AcDbDatabase drawing;
  acdbSetHostWorkingDatabase(&drawing);
  const double side = fill(drawing, count);
  const std::string of = " of " + std::to_string(count);
  const bool large = count > 500000;
  const Times lines = bareLines(count);
  view::Scene& scene = view::Scene::of(drawing);
  view::Camera& camera = view::Camera::of(drawing);
  camera.setSize(width, height);

  const AcGePoint3d middle{side / 2, side / 2, 0};
  beside("look for entities the first time" + of, "bare lines", lines, timed(1, [&] {
           scene.index(), scene.entriesIn(camera.projection(), {0, 0, 1, 1});
         }));
  camera.fit(view::PlaneBox{0, 0, side, side});
  view::Canvas canvas(scene, camera);
  beside("first picture" + of, "bare lines", lines, timed(1, [&] { canvas.paint(); }));
  beside("whole picture again" + of, "bare lines", lines,
         timed(3, [&] { canvas.repaint(), canvas.paint(); }));

  const auto frames = [&](const std::string& where) {
    int step = 0;
    const auto zoom = [&] {
      camera.zoom(step++ % 2 ? 1.25 : 0.8, {400, 300});
      canvas.follow();
    };
    within("pan by 12 pixels, " + where + of, large ? 0 : 16.7,
           timed(
               5,
               [&] {
                 camera.pan(step++ % 20 < 10 ? 12 : -12, 5);
                 canvas.follow(), canvas.paint(), canvas.compose();
               },
               8));
    within("zoom shows something, " + where + of, large ? 0 : 20,
           timed(
               5, [&] { zoom(), canvas.compose(); }, 4));
    beside("zoom to the whole picture, " + where + of, "bare lines", lines,
           timed(5, [&] { zoom(), canvas.paint(), canvas.compose(); }));
    within("changed entity to its picture, " + where + of, large ? 0 : 30,
           timed(
               5,
               [&] {
                 const AcDbObjectId id =
                     scene.entry(static_cast<std::uint32_t>(count / 2 + step++ * 37)).entity;
                 AcDbObjectPointer<AcDbEntity>(id, AcDb::kForWrite)
                     ->transformBy(AcGeMatrix3d::translation({3, 1, 0}));
                 canvas.paint(), canvas.compose();
               },
               6));
    int hits = 0;
    std::mt19937 random(5);
    std::uniform_real_distribution<double> along(0, width), down(0, height);
    const auto anywhere = [&] { return camera.toWorld({along(random), down(random)}); };
    within("pick, " + where + of, 5,
           timed(
               5, [&] { hits += host::entityAt(drawing, anywhere()).has_value(); }, 12));
    within("snap, " + where + of, 5,
           timed(
               5, [&] { hits += host::snapAt(drawing, anywhere(), 4133, middle).has_value(); }, 12));
    if (hits == 0) std::fprintf(stderr, "nothing was hit\n");
  };
  frames("full view");
  camera.show(middle, side / 25);
  canvas.follow(), canvas.paint();
  frames("1/25 of the height");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc > 1) return measure(std::atoi(argv[1])), 0;
  measure(100000);
  measure(1000000);
}
