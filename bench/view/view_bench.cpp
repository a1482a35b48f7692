// A drawing of 100,000 mixed entities: recording it, painting all and a part of it, a whole PNG. Beside it
// the surface's own work, which strokes as many bare lines as the drawing has entities.
#include <benchmark/benchmark.h>

#include <random>

#include "brx/db_block.h"
#include "brx/db_database.h"
#include "brx/db_text.h"
#include "host/view/picture.h"
#include "host/view/recorder.h"

namespace {

namespace view = host::view;
constexpr int entities = 100000;
constexpr double side = 1000;

AcDbObjectId addDashed(AcDbDatabase& drawing) {
  auto* const record = new AcDbLinetypeTableRecord;
  record->setName(L"DASHED");
  record->setPattern(L"", {0.5, -0.25});
  AcDbObjectPointer<AcDbLinetypeTable> table(drawing.tableId(AcDbLinetypeTable::desc()), AcDb::kForWrite);
  AcDbObjectId id;
  table->add(id, record);
  record->close();
  return id;
}

/// Half lines, a fifth of them dashed, and arcs, circles, polylines, texts and paragraphs.
AcDbEntity* made(int index, const AcGePoint3d& at, double angle) {
  const AcGeVector3d way{5 * std::cos(angle), 5 * std::sin(angle), 0};
  switch (index % 10) {
    case 0:
      return new AcDbCircle(at, {0, 0, 1}, 1 + angle);
    case 1:
      return new AcDbArc(at, 2, angle, angle + 2);
    case 2: {
      auto* const line = new AcDbPolyline;
      for (unsigned i = 0; i < 4; ++i)
        line->addVertexAt(i, {at.x + i * 2.0, at.y + (i % 2) * way.y}, i == 1 ? 0.5 : 0);
      return line;
    }
    case 3:
      return new AcDbText(at, L"Duct 250", {}, 0.8, angle);
    case 4: {
      auto* const text = new AcDbMText;
      text->setTextHeight(0.6), text->setLocation(at), text->setWidth(6);
      text->setContents(L"Supply {\\C1;450 m\\S3^ ;/h} to the room");
      return text;
    }
    default:
      return new AcDbLine(at, at + way);
  }
}

AcDbDatabase& sample() {
  static AcDbDatabase drawing;
  static const bool filled = [] {
    acdbSetHostWorkingDatabase(&drawing);
    const AcDbObjectId dashed = addDashed(drawing);
    std::mt19937 random(1);
    std::uniform_real_distribution<double> place(0, side), turn(0, 6.28);
    AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId(), AcDb::kForWrite);
    for (int i = 0; i < entities; ++i) {
      AcDbEntity* const entity = made(i, {place(random), place(random), 0}, turn(random));
      entity->setLayer(drawing.layerZero());
      entity->setColorIndex(static_cast<Adesk::UInt16>(1 + i / 10 % 9));
      if (i % 10 == 5) entity->setLinetype(dashed);
      space->appendAcDbEntity(entity);
      entity->close();
    }
    return true;
  }();
  static_cast<void>(filled);
  return drawing;
}

void recordDrawing(benchmark::State& state) {
  AcDbDatabase& drawing = sample();
  for (auto _ : state) benchmark::DoNotOptimize(view::record(drawing).items.size());
}
BENCHMARK(recordDrawing)->Unit(benchmark::kMillisecond);

void picture(benchmark::State& state, view::PictureKind kind, bool zoomed) {
  view::PictureSettings settings;
  if (zoomed) settings.window = view::PlaneBox{500, 500, 540, 530};
  std::string problem;
  for (auto _ : state)
    benchmark::DoNotOptimize(view::pictureBytes(view::Scene::of(sample()), settings, kind, problem).size());
}
BENCHMARK_CAPTURE(picture, png, view::PictureKind::png, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(picture, png_of_a_part, view::PictureKind::png, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(picture, svg, view::PictureKind::svg, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(picture, pdf, view::PictureKind::pdf, false)->Unit(benchmark::kMillisecond);

void yardstickBareLines(benchmark::State& state) {
  std::mt19937 random(1);
  std::uniform_real_distribution<double> place(0, 1200), turn(-3, 3);
  for (auto _ : state) {
    cairo_surface_t* const surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, 1600, 1200);
    cairo_t* const cairo = cairo_create(surface);
    cairo_set_line_width(cairo, 1);
    for (int i = 0; i < entities; ++i) {
      const double x = place(random), y = place(random);
      cairo_move_to(cairo, x, y);
      cairo_line_to(cairo, x + turn(random), y + turn(random));
      cairo_stroke(cairo);
    }
    cairo_destroy(cairo);
    cairo_surface_destroy(surface);
  }
}
BENCHMARK(yardstickBareLines)->Unit(benchmark::kMillisecond);

}  // namespace
