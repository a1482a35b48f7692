// What a window does with 100,000 and 1,000,000 entities: the first picture, panning and zooming, one changed
// entity to its picture, a pick and a snap. Times are of the processor. Beside each the work of the surface:
// bare lines by the drawing library, as many as the drawing has entities, or the memory that a picture takes.
#include <cairo.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <functional>
#include <random>
#include <string>

#include "brx/db_block.h"
#include "brx/db_text.h"
#include "host/editor/search.h"
#include "host/editor/snaps.h"
#include "host/view/canvas.h"

namespace {

namespace view = host::view;
constexpr int width = 1600, height = 1200;

double now() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}
/// The median of some runs, in milliseconds.
double timed(int runs, const std::function<void()>& work) {
  std::vector<double> times;
  for (int i = 0; i < runs; ++i) {
    const double start = now();
    work();
    times.push_back(now() - start);
  }
  std::sort(times.begin(), times.end());
  return times[times.size() / 2];
}

void row(const std::string& name, double yardstick, const char* yardstickName, double ours, double aim) {
  std::printf("%-46s | %10.3f ms (%s) | %10.3f ms | %8.4f | ", name.c_str(), yardstick, yardstickName, ours,
              ours / yardstick);
  aim > 0 ? std::printf("%g ms%s\n", aim, ours <= aim ? "" : "  MISSED") : std::printf("-\n");
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

double bareLines(int count) {
  cairo_surface_t* const surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height);
  cairo_t* const cairo = cairo_create(surface);
  cairo_set_line_width(cairo, 1);
  std::mt19937 random(1);
  std::uniform_real_distribution<double> place(0, height), way(-6, 6);
  const double time = timed(1, [&] {
    for (int i = 0; i < count; ++i) {
      const double x = place(random), y = place(random);
      cairo_move_to(cairo, x, y), cairo_line_to(cairo, x + way(random), y + way(random));
      cairo_stroke(cairo);
    }
  });
  cairo_destroy(cairo), cairo_surface_destroy(surface);
  return time;
}

double pictureCopy() {
  std::vector<std::uint32_t> from(width * height, 1), to(width * height);
  return timed(9, [&] { std::memcpy(to.data(), from.data(), from.size() * 4); });
}

void measure(int count) {
  AcDbDatabase drawing;
  acdbSetHostWorkingDatabase(&drawing);
  const double side = fill(drawing, count);
  const std::string of = " of " + std::to_string(count);
  const bool large = count > 500000;
  const double lines = bareLines(count), copy = pictureCopy();
  view::Scene& scene = view::Scene::of(drawing);
  view::Camera& camera = view::Camera::of(drawing);
  camera.setSize(width, height);

  const AcGePoint3d middle{side / 2, side / 2, 0};
  row("look for entities the first time" + of, lines, "bare lines",
      timed(1,
            [&] {
              scene.index(), scene.entriesIn(camera.projection(), {0, 0, 1, 1});
            }),
      0);
  camera.fit(view::PlaneBox{0, 0, side, side});
  view::Canvas canvas(scene, camera);
  row("first picture" + of, lines, "bare lines", timed(1, [&] { canvas.paint(); }), 0);
  row("whole picture again" + of, lines, "bare lines", timed(3, [&] { canvas.repaint(), canvas.paint(); }),
      0);

  const auto frames = [&](const std::string& where) {
    int step = 0;
    row("pan by 12 pixels, " + where + of, copy, "copy of a picture",
        timed(40,
              [&] {
                camera.pan(step++ % 20 < 10 ? 12 : -12, 5);
                canvas.follow(), canvas.paint(), canvas.compose();
              }),
        large ? 0 : 1000.0 / 60);
    row("zoom shows something, " + where + of, copy, "copy of a picture",
        timed(20,
              [&] {
                camera.zoom(step++ % 2 ? 1.25 : 0.8, {400, 300});
                canvas.follow(), canvas.compose();
              }),
        large ? 0 : 20);
    row("zoom to the whole picture, " + where + of, lines, "bare lines",
        timed(5,
              [&] {
                camera.zoom(step++ % 2 ? 1.25 : 0.8, {400, 300});
                canvas.follow(), canvas.paint(), canvas.compose();
              }),
        0);
    row("changed entity to its picture, " + where + of, copy, "copy of a picture",
        timed(30,
              [&] {
                const AcDbObjectId id =
                    scene.entry(static_cast<std::uint32_t>(count / 2 + step++ * 37)).entity;
                AcDbObjectPointer<AcDbEntity>(id, AcDb::kForWrite)
                    ->transformBy(AcGeMatrix3d::translation({3, 1, 0}));
                canvas.paint(), canvas.compose();
              }),
        large ? 0 : 30);
    int hits = 0;
    std::mt19937 random(5);
    std::uniform_real_distribution<double> along(0, width), down(0, height);
    const auto anywhere = [&] { return camera.toWorld({along(random), down(random)}); };
    row("pick, " + where + of, copy, "copy of a picture",
        timed(60, [&] { hits += host::entityAt(drawing, anywhere()).has_value(); }), 5);
    row("snap, " + where + of, copy, "copy of a picture",
        timed(60, [&] { hits += host::snapAt(drawing, anywhere(), 4133, middle).has_value(); }), 5);
    if (hits == 0) std::printf("nothing was hit\n");
  };
  frames("full view");
  camera.show(middle, side / 25);
  canvas.follow(), canvas.paint();
  frames("1/25 of the height");
}

}  // namespace

int main(int argc, char** argv) {
  std::printf("name | yardstick | ours | ratio | aim\n");
  if (argc > 1) return measure(std::atoi(argv[1])), 0;
  measure(100000);
  measure(1000000);
}
