// A drawing of 100,000 mixed entities: recording it, and pictures of all and of a part of it. Beside it the
// surface's own work: as many bare lines, and pictures of the same shapes drawn without a drawing.
#include <benchmark/benchmark.h>
#include <cairo-pdf.h>
#include <cairo-svg.h>

#include <random>
#include <string>

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

/// The shapes of the sample's entities, by the surface's own calls.
void strokeShapes(cairo_t* cairo) {
  std::mt19937 random(1);
  std::uniform_real_distribution<double> place(0, 1200), turn(0, 6.28);
  cairo_select_font_face(cairo, "osifont", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
  cairo_set_font_size(cairo, 1.3);
  cairo_set_line_width(cairo, 1);
  const double dashes[] = {0.6, 0.3};
  for (int i = 0; i < entities; ++i) {
    const double x = place(random), y = place(random), angle = turn(random);
    const int colour = i / 10 % 9;
    cairo_set_source_rgb(cairo, colour & 1, colour >> 1 & 1, colour >> 2 & 1);
    switch (i % 10) {
      case 0:
      case 1:
        cairo_arc(cairo, x, y, 1.2 * (1 + angle), i % 10 ? angle : 0, i % 10 ? angle + 2 : 6.28318);
        break;
      case 2:
        cairo_move_to(cairo, x, y), cairo_line_to(cairo, x + 2.4, y + 2.4);
        cairo_arc(cairo, x + 3.6, y + 1.2, 1.7, -2.3, 0.7);
        cairo_line_to(cairo, x + 7.2, y + 2.4);
        break;
      case 4:
        cairo_move_to(cairo, x, y + 2), cairo_show_text(cairo, "450 m3/h to");
        cairo_move_to(cairo, x, y + 4), cairo_show_text(cairo, "the room");
        [[fallthrough]];
      case 3:
        cairo_move_to(cairo, x, y), cairo_show_text(cairo, "Duct 250");
        continue;
      default:
        cairo_move_to(cairo, x, y);
        cairo_line_to(cairo, x + 6 * std::cos(angle), y + 6 * std::sin(angle));
    }
    cairo_set_dash(cairo, dashes, i % 10 == 5 ? 2 : 0, 0);
    cairo_stroke(cairo);
  }
}

cairo_status_t append(void* file, const unsigned char* bytes, unsigned count) {
  static_cast<std::string*>(file)->append(reinterpret_cast<const char*>(bytes), count);
  return CAIRO_STATUS_SUCCESS;
}

void yardstickShapes(benchmark::State& state, view::PictureKind kind) {
  for (auto _ : state) {
    std::string file;
    cairo_surface_t* const surface =
        kind == view::PictureKind::svg   ? cairo_svg_surface_create_for_stream(append, &file, 1600, 1200)
        : kind == view::PictureKind::pdf ? cairo_pdf_surface_create_for_stream(append, &file, 1600, 1200)
                                         : cairo_image_surface_create(CAIRO_FORMAT_RGB24, 1600, 1200);
    cairo_t* const cairo = cairo_create(surface);
    strokeShapes(cairo);
    cairo_destroy(cairo);
    if (kind == view::PictureKind::png) cairo_surface_write_to_png_stream(surface, append, &file);
    cairo_surface_finish(surface);
    cairo_surface_destroy(surface);
    benchmark::DoNotOptimize(file.size());
  }
}
BENCHMARK_CAPTURE(yardstickShapes, png, view::PictureKind::png)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(yardstickShapes, svg, view::PictureKind::svg)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(yardstickShapes, pdf, view::PictureKind::pdf)->Unit(benchmark::kMillisecond);

}  // namespace
