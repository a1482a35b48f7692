// Entities in memory: made, walked, changed and found by their handles, beside a program that keeps no more
// than each line's two points and a table of handles.
#include <cstdint>
#include <fstream>
#include <memory>
#include <string>
#include <unordered_map>

#include "bench/rows.h"
#include "brx/db_database.h"

namespace {

double residentBytes() {
  std::ifstream statm("/proc/self/statm");
  long total = 0, resident = 0;
  statm >> total >> resident;
  return static_cast<double>(resident) * 4096;
}

struct PlainLine {
  AcGePoint3d start, end;
  std::uint64_t handle;
};

class PlainDrawing {
 public:
  void append(int count) {
    for (int i = 0; i < count; ++i) {
      lines.push_back(std::make_unique<PlainLine>(PlainLine{{0.0 + i, 0, 0}, {0.0 + i, 1, 0}, next_}));
      byHandle.emplace(next_++, lines.back().get());
    }
  }
  std::vector<std::unique_ptr<PlainLine>> lines;
  std::unordered_map<std::uint64_t, PlainLine*> byHandle;

 private:
  std::uint64_t next_ = 1;
};

void append(AcDbDatabase& drawing, int count) {
  AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId(), AcDb::kForWrite);
  for (int i = 0; i < count; ++i) {
    auto* const line = new AcDbLine({0.0 + i, 0, 0}, {0.0 + i, 1, 0});
    if (space->appendAcDbEntity(line) == Acad::eOk) line->close();
  }
}

volatile double seen;

void measure(int count, const std::string& many) {
  const auto row = [&](const char* what, auto theirs, auto ours, double aim) {
    bench::compare(what + (" each of " + many), "ns", "plain C++", theirs, ours, aim, 3, count);
  };
  row(
      "a line appended,", [&] { PlainDrawing().append(count); },
      [&] {
        AcDbDatabase drawing;
        append(drawing, count);
      },
      5);
  const double before = residentBytes();
  AcDbDatabase drawing;
  append(drawing, count);
  if (count >= 1000000)
    bench::printRow("memory of a line", "bytes", "", {}, {(residentBytes() - before) / count}, 400);
  PlainDrawing plain;
  plain.append(count);
  AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId());
  row(
      "a line read,",
      [&] {
        double sum = 0;
        for (const auto& each : plain.lines) sum += each->end.x;
        seen = sum;
      },
      [&] {
        double sum = 0;
        for (const AcDbObjectId& id : space->entityIds()) {
          AcDbObjectPointer<AcDbLine> line(id);
          sum += line->endPoint().x;
        }
        seen = sum;
      },
      0);
  row(
      "a line changed,",
      [&] {
        for (const auto& each : plain.lines) each->end = each->end + AcGeVector3d{0, 1, 0};
      },
      [&] {
        for (const AcDbObjectId& id : space->entityIds()) {
          AcDbObjectPointer<AcDbLine> line(id, AcDb::kForWrite);
          line->setEndPoint(line->endPoint() + AcGeVector3d{0, 1, 0});
        }
      },
      0);
  row(
      "a line found by its handle,",
      [&] {
        double sum = 0;
        for (const auto& each : plain.lines) sum += plain.byHandle.at(each->handle)->end.x;
        seen = sum;
      },
      [&] {
        double sum = 0;
        for (const AcDbObjectId& id : space->entityIds()) {
          AcDbObjectId found;
          drawing.getAcDbObjectId(found, false, id.handle());
          sum += found == id;
        }
        seen = sum;
      },
      5);
}

}  // namespace

int main() {
  measure(10'000, "10 thousand");
  measure(100'000, "100 thousand");
  measure(1'000'000, "a million");
}
