// Times the reading and writing of mixed entities: filing_bench COUNT FOLDER
// Prints a line "name seconds" for each, the best of three; "bytes" is memory for each entity when read.
#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "host/filing/files.h"
#include "platform/text/utf.h"
#include "tests/filing/mixed_drawing.h"

namespace {

template <class Work>
double secondsOf(Work work) {
  using Clock = std::chrono::steady_clock;
  double best = 1e9;
  for (int round = 0; round < 3; ++round) {
    const auto start = Clock::now();
    work();
    best = std::min(best, std::chrono::duration<double>(Clock::now() - start).count());
  }
  return best;
}

void check(Acad::ErrorStatus status) {
  if (status == Acad::eOk) return;
  std::fprintf(stderr, "filing_bench: status %d\n", status);
  std::exit(1);
}

std::unique_ptr<AcDbDatabase> readFile(const std::wstring& path) {
  auto drawing = std::make_unique<AcDbDatabase>(false);
  host::FilingReport report;
  check(host::readDrawingFile(*drawing, path, report));
  return drawing;
}

double usedBytes() { return static_cast<double>(mallinfo2().uordblks + mallinfo2().hblkhd); }

}  // namespace

int main(int count, char** words) {
  if (count != 3) return std::fprintf(stderr, "usage: filing_bench COUNT FOLDER\n"), 2;
  const int entities = std::atoi(words[1]);
  const std::wstring folder = fromUtf8(words[2]);
  const std::wstring dxf = folder + L"/mixed.dxf", snapshot = folder + L"/mixed.dwg";
  {
    AcDbDatabase drawing;
    drawMixed(drawing, entities);
    std::printf("write-dxf %.4f\n", secondsOf([&] { check(host::writeDrawingFile(drawing, dxf)); }));
    std::printf("write-snapshot %.4f\n",
                secondsOf([&] { check(host::writeDrawingFile(drawing, snapshot)); }));
  }
  std::printf("read-dxf %.4f\n", secondsOf([&] { readFile(dxf); }));
  std::printf("read-snapshot %.4f\n", secondsOf([&] { readFile(snapshot); }));
  const double before = usedBytes();
  const auto drawing = readFile(dxf);
  std::printf("bytes %.0f\n", (usedBytes() - before) / std::max(entities, 1));
}
