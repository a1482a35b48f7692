// Selections over a million entities: the module's walks, called from LISP, beside the same walk in plain
// C++, and crossing windows of the host.
#include <benchmark/benchmark.h>

#include <memory>

#include "brx/db_block.h"
#include "brx/db_database.h"
#include "host/access/access_functions.h"
#include "host/bridge/document_lisp.h"
#include "host/console/command_line.h"
#include "host/documents/documents.h"
#include "host/editor/editor_functions.h"
#include "host/rx/modules.h"

namespace {

constexpr int million = 1000000;

AcDbObjectId newBlock(AcDbDatabase& drawing, const ACHAR* name) {
  AcDbObjectPointer<AcDbBlockTable> table(drawing.tableId(AcDbBlockTable::desc()), AcDb::kForWrite);
  auto* const record = new AcDbBlockTableRecord;
  record->setName(name);
  AcDbObjectId id;
  table->add(id, record);
  auto* const line = new AcDbLine({0, 0, 0}, {1, 1, 0});
  if (record->appendAcDbEntity(line) == Acad::eOk) line->close();
  record->close();
  return id;
}

/// Every tenth entity is a reference to "Valve", every other tenth one to "Damper", the rest are lines.
void fill(AcDbDatabase& drawing) {
  const AcDbObjectId valve = newBlock(drawing, L"Valve"), damper = newBlock(drawing, L"Damper");
  AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId(), AcDb::kForWrite);
  for (int i = 0; i < million; ++i) {
    const AcGePoint3d at{static_cast<double>(i % 1000), static_cast<double>(i / 1000), 0};
    AcDbEntity* const made = i % 10 == 0   ? new AcDbBlockReference(at, valve)
                             : i % 10 == 5 ? new AcDbBlockReference(at, damper)
                                           : static_cast<AcDbEntity*>(new AcDbLine(at, {at.x + 1, at.y, 0}));
    if (space->appendAcDbEntity(made) == Acad::eOk) made->close();
  }
}

/// The host with the module and a filled drawing, made once.
lisp::Interpreter& lispOfFilledDrawing() {
  static const bool made = [] {
    host::commandLine().setShown(false);
    host::setDocumentLispMaker([] {
      auto document = std::make_unique<host::InterpreterOfDocument>();
      host::defineEditorFunctions(document->interpreter());
      host::defineAccessFunctions(document->interpreter());
      return document;
    });
    fill(*host::documents().create(L"").database());
    std::wstring problem;
    return host::modules().load(L"zarbo", problem);
  }();
  if (!made) std::abort();
  return host::currentInterpreter();
}

void callLisp(benchmark::State& state, const char* form) {
  lisp::Interpreter& lisp = lispOfFilledDrawing();
  for (auto _ : state) benchmark::DoNotOptimize(lisp.evalSource(form, L""));
}

/// What a program would do that needs no list for LISP: the ids of all references to one block.
void plainWalk(benchmark::State& state) {
  lispOfFilledDrawing();
  AcDbDatabase& drawing = *acdbHostWorkingDatabase();
  AcDbObjectId wanted;
  AcDbObjectPointer<AcDbBlockTable>(drawing.tableId(AcDbBlockTable::desc()))->getAt(L"Valve", wanted);
  for (auto _ : state) {
    std::vector<AcDbObjectId> found;
    const AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId());
    AcDbBlockTableRecordIterator* walk = nullptr;
    space->newIterator(walk);
    const std::unique_ptr<AcDbBlockTableRecordIterator> owner(walk);
    for (; !walk->done(); walk->step()) {
      AcDbEntity* entity = nullptr;
      if (walk->getEntity(entity) != Acad::eOk) continue;
      const auto* const reference = AcDbBlockReference::cast(entity);
      if (reference && reference->blockTableRecord() == wanted) found.push_back(entity->objectId());
      entity->close();
    }
    benchmark::DoNotOptimize(found.data());
  }
}

BENCHMARK(plainWalk)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(callLisp, ssgetX_block_100000_hits, "(ssgetX-block \"VALVE\")")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(callLisp, ssgetX_block_no_hits, "(ssgetX-block \"NONE\")")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(callLisp, ssgetX_all_1000000_hits, "(ssgetX-all)")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(callLisp, ssget_X_by_type_and_block, "(ssget \"X\" '((0 . \"INSERT\") (2 . \"Valve\")))")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(callLisp, ssget_crossing_400_entities, "(ssget \"C\" '(100 100) '(119 119))")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(callLisp, ssget_at_a_point, "(ssget '(500.5 500))")->Unit(benchmark::kMillisecond);

}  // namespace
