#include <benchmark/benchmark.h>

#include <cmath>
#include <fstream>

#include "solid/boolean.h"
#include "solid/chain.h"
#include "solid/elbow.h"
#include "solid/filing.h"
#include "solid/wye.h"

/// Each operation of the kernel at 24 facets. Bodies of the other modeller stand beside them when it was
/// there at the build.
///
///     build/release/bin/solid_bench

namespace {

using namespace solid;

constexpr double right = 1.570796326794896619;

SectionEnd end(double x, double y, double angle, double width, double height, bool rectangular) {
  const Vector along{std::cos(angle), std::sin(angle), 0}, left{-std::sin(angle), std::cos(angle), 0};
  return {{x, y, 0}, rectangular, width, height, {along, left, {0, 0, 1}}};
}

Body straight(bool rectangular, double height = 10) {
  return transition(end(0, 0, 0, 20, height, rectangular), end(100, 0, 0, 20, height, rectangular), 0);
}

void straightPiece(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(straight(state.range(0), 20));
}
BENCHMARK(straightPiece)->ArgName("rectangular")->Arg(1)->Arg(0);

void rectangleToRound(benchmark::State& state) {
  for (auto _ : state)
    benchmark::DoNotOptimize(transition(end(0, 0, 0, 20, 10, true), end(30, 0, 0, 12, 12, false), 0));
}
BENCHMARK(rectangleToRound);

void square(benchmark::State& state) {
  const bool rectangular = state.range(0);
  for (auto _ : state) {
    SectionEnd head = end(-100, 0, 0, 20, 20, rectangular), tail = end(0, 90, right, 20, 20, rectangular);
    Mitre mitre;
    prepareSquareElbow(head, tail, 3, mitre);
    benchmark::DoNotOptimize(squareElbow(head, tail, mitre.head, 0));
  }
}
BENCHMARK(square)->ArgName("rectangular")->Arg(1)->Arg(0);

void radius(benchmark::State& state) {
  const bool rectangular = state.range(0);
  for (auto _ : state) {
    SectionEnd head = end(-100, 0, 0, 20, 20, rectangular), tail = end(0, 90, right, 20, 20, rectangular);
    Body body;
    radiusElbow(head, tail, 30, 0, &body);
    benchmark::DoNotOptimize(body);
  }
}
BENCHMARK(radius)->ArgName("rectangular")->Arg(1)->Arg(0);

/// Main and tap, trimmed at both ends of the main.
void takeoff(benchmark::State& state) {
  const bool rectangular = state.range(0);
  for (auto _ : state) {
    Body main = straight(true);
    Body tap = transition(end(50, 0, right, 8, 8, rectangular), end(50, 30, right, 8, 8, rectangular), 0);
    cutTo(tap, {{0, 0, 0}, {-1, 0, 0}});
    cutTo(tap, {{100, 0, 0}, {1, 0, 0}});
    benchmark::DoNotOptimize(main);
    benchmark::DoNotOptimize(tap);
  }
}
BENCHMARK(takeoff)->ArgName("rectangular")->Arg(1)->Arg(0);

void wyePiece(benchmark::State& state) {
  const bool rectangular = state.range(0);
  for (auto _ : state) {
    Limbs limbs = {end(-100, 0, 0, 20, 20, rectangular), end(60, 60, right / 2, 20, 20, rectangular),
                   end(60, -60, -right / 2, 20, 20, rectangular)};
    Junction junction;
    prepareWye(limbs, 3, junction);
    benchmark::DoNotOptimize(wye(limbs, junction.meet, 0));
  }
}
BENCHMARK(wyePiece)->ArgName("rectangular")->Arg(1)->Arg(0);

void hangerBand(benchmark::State& state) {
  const bool rectangular = state.range(0);
  for (auto _ : state) {
    Body band = transition(end(0, 0, 0, 22, 22, rectangular), end(1, 0, 0, 22, 22, rectangular), 0);
    subtract(band,
             transition(end(0, 0, 0, 20.2, 20.2, rectangular), end(1, 0, 0, 20.2, 20.2, rectangular), 0));
    benchmark::DoNotOptimize(band);
  }
}
BENCHMARK(hangerBand)->ArgName("rectangular")->Arg(1)->Arg(0);

/// 0 both rectangular, 1 mixed, 2 both round.
void unionOfTwo(benchmark::State& state) {
  const Body first = straight(state.range(0) < 2, 20);
  const Body second = transition(end(50, -50, right, 16, 16, state.range(0) == 0),
                                 end(50, 50, right, 16, 16, state.range(0) == 0), 0);
  for (auto _ : state) {
    std::vector<Body> bodies = {first, second};
    unite(bodies);
    benchmark::DoNotOptimize(bodies);
  }
}
BENCHMARK(unionOfTwo)->ArgName("round")->Arg(0)->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);

double residentBytes() {
  std::ifstream statm("/proc/self/statm");
  long total = 0, resident = 0;
  statm >> total >> resident;
  return static_cast<double>(resident) * 4096;
}

void tenThousandMixed(benchmark::State& state) {
  double grown = 0;
  size_t filed = 0;
  for (auto _ : state) {
    const double before = residentBytes();
    std::vector<Body> bodies;
    bodies.reserve(10000);
    for (int i = 0; i < 2000; ++i) {
      const bool rectangular = i % 2;
      bodies.push_back(straight(rectangular, 20));
      bodies.push_back(transition(end(0, 0, 0, 20, 10, true), end(30, 0, 0, 12, 12, false), 0));
      SectionEnd head = end(-100, 0, 0, 20, 20, rectangular), tail = end(0, 90, right, 20, 20, rectangular);
      Mitre mitre;
      prepareSquareElbow(head, tail, 3, mitre);
      bodies.push_back(squareElbow(head, tail, mitre.head, 0));
      Body bend;
      radiusElbow(head, tail, 30, 0, &bend);
      bodies.push_back(std::move(bend));
      Body tap = straight(rectangular, 20);
      cutTo(tap, {{50, 0, 0}, {0.6, 0.8, 0}});
      bodies.push_back(std::move(tap));
    }
    state.PauseTiming();
    grown = std::max(grown, residentBytes() - before);
    filed = packed(bodies).size();
    state.ResumeTiming();
  }
  state.counters["MB"] = grown / 1e6;
  state.counters["filed MB"] = static_cast<double>(filed) / 1e6;
}
BENCHMARK(tenThousandMixed)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
