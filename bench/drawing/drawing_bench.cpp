#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "brx/db_database.h"

/// A drawing of many lines: time to make, walk and change them, and what an entity takes in memory.
///
///     build/release/bin/drawing_bench [COUNT]

namespace {

double residentBytes() {
  std::ifstream statm("/proc/self/statm");
  long total = 0, resident = 0;
  statm >> total >> resident;
  return static_cast<double>(resident) * 4096;
}

template <class Work>
void timed(const char* what, int count, Work work) {
  const auto begin = std::chrono::steady_clock::now();
  work();
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
  std::printf("%-34s %8.3f s  %8.1f ns each\n", what, took.count(), took.count() * 1e9 / count);
}

}  // namespace

int main(int argc, char** argv) {
  const int count = argc > 1 ? std::atoi(argv[1]) : 1'000'000;
  AcDbDatabase drawing;
  const double before = residentBytes();
  timed("append lines", count, [&] {
    AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId(), AcDb::kForWrite);
    for (int i = 0; i < count; ++i) {
      auto* const line = new AcDbLine({0.0 + i, 0, 0}, {0.0 + i, 1, 0});
      space->appendAcDbEntity(line);
      line->close();
    }
  });
  const double each = (residentBytes() - before) / count;
  double sum = 0;
  AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId());
  timed("open, read and close each", count, [&] {
    for (const AcDbObjectId& id : space->entityIds()) {
      AcDbObjectPointer<AcDbLine> line(id);
      sum += line->endPoint().x;
    }
  });
  timed("open, change and close each", count, [&] {
    for (const AcDbObjectId& id : space->entityIds()) {
      AcDbObjectPointer<AcDbLine> line(id, AcDb::kForWrite);
      line->setEndPoint(line->endPoint() + AcGeVector3d{0, 1, 0});
    }
  });
  timed("find each by its handle", count, [&] {
    for (const AcDbObjectId& id : space->entityIds()) {
      AcDbObjectId found;
      drawing.getAcDbObjectId(found, false, id.handle());
      sum += found == id;
    }
  });
  timed("extents of all", count, [&] { drawing.updateExt(); });
  std::printf("an entity takes %.0f bytes, %zu of which are the line's object (checksum %.0f)\n", each,
              sizeof(AcDbLine), sum);
}
