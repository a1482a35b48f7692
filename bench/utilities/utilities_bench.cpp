#include <benchmark/benchmark.h>
#include <uuid/uuid.h>

#include <cstdio>

#include "zarbo/support/identifiers.h"
#include "zarbo/support/number_text.h"

namespace {

double nextValue(double value) { return value < 1e6 ? value * 1.37 : 0.0123; }

void ourRealToText(benchmark::State& state) {
  double value = 0.0123;
  for (auto _ : state) benchmark::DoNotOptimize(realToText(value = nextValue(value), 4, false));
}
BENCHMARK(ourRealToText);

void yardstickSnprintf(benchmark::State& state) {
  double value = 0.0123;
  char text[400];
  for (auto _ : state)
    benchmark::DoNotOptimize(std::snprintf(text, sizeof text, "%.4f", value = nextValue(value)));
}
BENCHMARK(yardstickSnprintf);

void ourGuidString64(benchmark::State& state) {
  wchar_t text[23];
  for (auto _ : state) benchmark::DoNotOptimize(createGuidString64(text, 23));
}
BENCHMARK(ourGuidString64);

void yardstickUuid(benchmark::State& state) {
  uuid_t id;
  char text[37];
  for (auto _ : state) {
    uuid_generate(id);
    uuid_unparse(id, text);
    benchmark::DoNotOptimize(text);
  }
}
BENCHMARK(yardstickUuid);

}  // namespace
