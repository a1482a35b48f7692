#include "host/access/access_state.h"

#include "host/access/selection_set.h"
#include "host/drawing/stubs.h"
#include "host/lisp/interpreter.h"

namespace host {
namespace {

std::map<const AcDbDatabase*, AccessState>& states() {
  // Lives to the end: the documents that forget their drawings go late.
  static auto* const all = new std::map<const AcDbDatabase*, AccessState>;
  return *all;
}

}  // namespace

AccessState& accessStateOf(AcDbDatabase& drawing) {
  return states().try_emplace(&drawing, drawing).first->second;
}

ErasedRuns& erasedRunsOf(AcDbObjectId owner) {
  ErasedRuns& runs = accessStateOf(*owner.database()).erasedRuns[owner];
  runs.forgetAfter(owner.database()->imp().revivals);
  return runs;
}

void forgetDrawing(const AcDbDatabase& drawing) {
  states().erase(&drawing);
  selectionSets().forget(drawing);
}

AcDbDatabase& currentDrawing() {
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  if (!drawing) throw lisp::LispError(L"no drawing is open");
  return *drawing;
}

}  // namespace host
