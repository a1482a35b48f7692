#include "host/editor/drawing_state.h"

#include "brx/db_database.h"
#include "host/database/kept_for_drawing.h"

namespace host {

DrawingState& stateOf(AcDbDatabase& drawing) { return keptFor<DrawingState>(drawing); }

DrawingState* currentState() {
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  return drawing ? &stateOf(*drawing) : nullptr;
}

}  // namespace host
