#include "host/editor/drawing_state.h"

#include <map>

#include "brx/db_database.h"
#include "host/access/selection_set.h"
#include "host/rx/editor.h"

namespace host {
namespace {

std::map<const AcDbDatabase*, DrawingState>& states() {
  static std::map<const AcDbDatabase*, DrawingState> all;
  return all;
}

/// Nothing of a drawing stays behind when it goes.
class ClosingReactor : public AcEditorReactor {
 public:
  void databaseToBeDestroyed(AcDbDatabase* drawing) override {
    states().erase(drawing);
    selectionSets().forget(*drawing);
  }
};

}  // namespace

DrawingState& stateOf(AcDbDatabase& drawing) {
  static ClosingReactor* const reactor = [] {
    auto* const made = new ClosingReactor;
    editor().addReactor(made);
    return made;
  }();
  (void)reactor;
  DrawingState& state = states()[&drawing];
  state.drawing = &drawing;
  return state;
}

DrawingState* currentState() {
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  return drawing ? &stateOf(*drawing) : nullptr;
}

}  // namespace host
