// Samples of a drag with 1, 100 and 1,000 entities under the cursor: the loop with the image's display list,
// and the same with the picture painted. Beside it, as yardstick, the bare moving of as many entities and no
// loop, no image. A row's time is that of one sample.
#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

#include "brx/db_curves.h"
#include "brx/ed_jig.h"
#include "host/console/command_line.h"
#include "host/documents/documents.h"
#include "host/editor/drag.h"
#include "host/editor/person.h"
#include "host/script/queues.h"
#include "host/view/painter.h"
#include "host/view/recorder.h"

namespace {

namespace view = host::view;
constexpr int samples = 200;

std::vector<std::unique_ptr<AcDbEntity>> shapes(int64_t count) {
  std::vector<std::unique_ptr<AcDbEntity>> made;
  for (int i = 0; i < count; ++i) {
    const AcGePoint3d at{i % 32 * 3.0, i / 32 * 3.0, 0};
    if (i % 2 == 0) {
      made.push_back(std::make_unique<AcDbLine>(at, at + AcGeVector3d{2, 1, 0}));
    } else {
      made.push_back(std::make_unique<AcDbCircle>(at, AcGeVector3d::kZAxis, 1));
    }
  }
  return made;
}

/// Draws its parts.
class Image : public AcDbEntity {
 public:
  explicit Image(int64_t count) : parts(shapes(count)) {}
  std::vector<std::unique_ptr<AcDbEntity>> parts;

 protected:
  bool subWorldDraw(AcGiWorldDraw* draw) override {
    for (const auto& each : parts) draw->geometry().draw(each.get());
    return true;
  }
};

class MoveJig : public AcEdJig {
 public:
  explicit MoveJig(int64_t count, bool paints) : image_(count), paints_(paints) {}
  AcDbEntity* entity() const override { return const_cast<Image*>(&image_); }
  bool update() override {
    const AcGeMatrix3d step = AcGeMatrix3d::translation(now_ - before_);
    for (const auto& each : image_.parts) each->transformBy(step);
    before_ = now_;
    if (paints_) paint();
    return true;
  }
  DragStatus sampler() override { return acquirePoint(now_); }

 private:
  void paint() {
    view::RecordOptions options;
    options.dragging = true;
    const view::DisplayList list = view::record(*acdbHostWorkingDatabase(), image_, options);
    cairo_surface_t* const surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, 1600, 1200);
    cairo_t* const cairo = cairo_create(surface);
    view::Surface target;
    target.cairo = cairo, target.width = 1600, target.height = 1200;
    target.window = view::PlaneBox{-50, -50, 200, 137.5};
    view::Painter painter(target);
    painter.paintGround();
    painter.paint(list);
    cairo_destroy(cairo);
    cairo_surface_destroy(surface);
  }

  Image image_;
  bool paints_;
  AcGePoint3d now_, before_;
};

/// Moves to and fro, and then accepts.
class Mover : public host::Person {
 public:
  host::InputItem next(const host::Request&) override {
    const AcGePoint3d at{left_ % 7 * 1.0, left_ % 5 * 1.0, 0};
    if (--left_ <= 0) return at;
    return host::Moved{at};
  }

 private:
  int left_ = samples;
};

void openDrawing() {
  if (host::documents().current()) return;
  host::documents().create(L"");
  host::commandLine().setShown(false);
}

void drag(benchmark::State& state, bool paints) {
  openDrawing();
  for (auto _ : state) {
    state.PauseTiming();
    MoveJig jig(state.range(0), paints);
    host::setPerson(std::make_unique<Mover>());
    state.ResumeTiming();
    jig.drag();
  }
  host::dragRecords().clear();
  host::scriptQueues().prompts.clear();
  state.counters["sample"] = benchmark::Counter(
      samples, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
void yardstickBareMoves(benchmark::State& state) {
  const auto moved = shapes(state.range(0));
  for (auto _ : state) {
    for (int i = 0; i < samples; ++i) {
      const AcGeMatrix3d step = AcGeMatrix3d::translation({i % 2 ? 1.0 : -1.0, 0, 0});
      for (const auto& each : moved) each->transformBy(step);
    }
  }
  state.counters["sample"] = benchmark::Counter(
      samples, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(yardstickBareMoves)->Arg(1)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(drag, list, false)->Arg(1)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(drag, painted, true)->Arg(1)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

}  // namespace
