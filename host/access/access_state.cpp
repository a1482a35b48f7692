#include "host/access/access_state.h"

#include "host/database/kept_for_drawing.h"
#include "host/database/stubs.h"
#include "host/lisp/interpreter.h"

namespace host {

AccessState& accessStateOf(AcDbDatabase& drawing) { return keptFor<AccessState>(drawing); }

ErasedRuns& erasedRunsOf(AcDbObjectId owner) {
  ErasedRuns& runs = accessStateOf(*owner.database()).erasedRuns[owner];
  runs.forgetAfter(owner.database()->imp().revivals);
  return runs;
}

AcDbDatabase& currentDrawing() {
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  if (!drawing) throw lisp::LispError(L"no drawing is open");
  return *drawing;
}

}  // namespace host
