#include <benchmark/benchmark.h>

#include <BRepAlgoAPI_Fuse.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepOffsetAPI_ThruSections.hxx>
#include <TopoDS_Wire.hxx>
#include <cmath>

/// The same bodies made by another modeller.

namespace {

TopoDS_Wire ring(double x, double width, double height, bool rectangular, bool alongY = false) {
  BRepBuilderAPI_MakePolygon polygon;
  const auto add = [&](double across, double up) {
    polygon.Add(alongY ? gp_Pnt(50 - across, x, up) : gp_Pnt(x, across, up));
  };
  if (rectangular) {
    for (const auto& [w, h] : {std::pair(-1, -1), std::pair(1, -1), std::pair(1, 1), std::pair(-1, 1)}) {
      add(w * width / 2, h * height / 2);
    }
  } else {
    for (int i = 0; i < 24; ++i)
      add(width / 2 * std::cos(i * M_PI / 12), height / 2 * std::sin(i * M_PI / 12));
  }
  polygon.Close();
  return polygon.Wire();
}

TopoDS_Shape piece(bool rectangular, double from, double to, double size, bool alongY = false) {
  BRepOffsetAPI_ThruSections loft(true, true);
  loft.AddWire(ring(from, size, size, rectangular, alongY));
  loft.AddWire(ring(to, size, size, rectangular, alongY));
  loft.Build();
  return loft.Shape();
}

void otherStraight(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(piece(state.range(0), 0, 100, 20));
}
BENCHMARK(otherStraight)->ArgName("rectangular")->Arg(1)->Arg(0);

void otherUnion(benchmark::State& state) {
  const TopoDS_Shape first = piece(state.range(0) < 2, 0, 100, 20),
                     second = piece(state.range(0) == 0, -50, 50, 16, true);
  for (auto _ : state) {
    BRepAlgoAPI_Fuse fuse(first, second);
    benchmark::DoNotOptimize(fuse.Shape());
  }
}
BENCHMARK(otherUnion)->ArgName("round")->Arg(0)->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);

}  // namespace
