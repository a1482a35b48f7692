// Reading and writing of mixed entities, beside a program on dxflib where that was there at the build, and
// how the cost of one grows with their number: filing_bench FOLDER COUNT. Leaves FOLDER/mixed.dxf with COUNT
// entities.
#include <malloc.h>

#include <cstdlib>
#include <memory>
#include <string>

#include "bench/rows.h"
#include "host/filing/files.h"
#include "platform/text/utf.h"
#include "tests/filing/mixed_drawing.h"
#ifdef HAVE_DXFLIB
#include "bench/filing/plain_reader.h"
#endif

namespace {

void check(Acad::ErrorStatus status) {
  if (status == Acad::eOk) return;
  std::fprintf(stderr, "filing_bench: status %d\n", status);
  std::exit(1);
}

void writeFile(AcDbDatabase& drawing, const std::string& path) {
  check(host::writeDrawingFile(drawing, fromUtf8(path)));
}

std::unique_ptr<AcDbDatabase> readFile(const std::string& path) {
  auto drawing = std::make_unique<AcDbDatabase>(false);
  host::FilingReport report;
  check(host::readDrawingFile(*drawing, fromUtf8(path), report));
  return drawing;
}

double usedBytes() { return static_cast<double>(mallinfo2().uordblks + mallinfo2().hblkhd); }

std::string spoken(int count) {
  return count % 1000000 == 0 ? std::to_string(count / 1000000) + " million"
                              : std::to_string(count / 1000) + " thousand";
}

void besideOthers(const std::string& folder, int count) {
  const std::string dxf = folder + "/mixed.dxf", snapshot = folder + "/mixed.dwg";
  AcDbDatabase drawing;
  drawMixed(drawing, count);
  writeFile(drawing, dxf), writeFile(drawing, snapshot);
  const std::string mixed = spoken(count) + " mixed entities";
#ifdef HAVE_DXFLIB
  PlainDrawing plain;
  plain.read(dxf);
  if (plain.count() < static_cast<size_t>(count)) std::exit(1);
  bench::compare(
      "DXF read, " + mixed, "ms", "dxflib", [&] { PlainDrawing().read(dxf); }, [&] { readFile(dxf); }, 1);
  bench::compare(
      "DXF written, " + mixed, "ms", "dxflib", [&] { plain.write(folder + "/plain.dxf"); },
      [&] { writeFile(drawing, dxf); }, 1);
#endif
  bench::compare(
      "snapshot read, " + mixed, "ms", "the same as DXF", [&] { readFile(dxf); }, [&] { readFile(snapshot); },
      0.5);
  bench::compare(
      "snapshot written, " + mixed, "ms", "the same as DXF", [&] { writeFile(drawing, dxf); },
      [&] { writeFile(drawing, snapshot); }, 0.5);
  const double before = usedBytes();
  const auto read = readFile(dxf);
  bench::printRow("memory of an entity read from DXF", "bytes", "", {}, {(usedBytes() - before) / count}, 0);
}

/// What each of `count` entities costs.
struct Costs {
  bench::Times reading, writing;
};
Costs costsOf(int count, const std::string& path) {
  Costs costs;
  AcDbDatabase drawing;
  drawMixed(drawing, count);
  for (int round = 0; round < 3; ++round) {
    costs.writing.push_back(bench::inUnit("us", bench::secondsOf([&] { writeFile(drawing, path); }), count));
    costs.reading.push_back(bench::inUnit("us", bench::secondsOf([&] { readFile(path); }), count));
  }
  return costs;
}

}  // namespace

int main(int count, char** words) {
  if (count != 3) return std::fprintf(stderr, "usage: filing_bench FOLDER COUNT\n"), 2;
  const std::string folder = words[1], grown = folder + "/grown.dxf";
  besideOthers(folder, std::atoi(words[2]));
  const Costs few = costsOf(10000, grown);
  for (const int many : {100000, 1000000}) {
    const Costs each = costsOf(many, grown);
    bench::printRow("DXF read, each of " + spoken(many), "us", "each of 10 thousand", few.reading,
                    each.reading, 1.5);
    bench::printRow("DXF written, each of " + spoken(many), "us", "each of 10 thousand", few.writing,
                    each.writing, 1.5);
  }
}
