#include "host/editor/drawing_state.h"

#include <map>

#include "brx/db_database.h"
#include "host/database/selection_set.h"
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

/// Listens as long as what it clears lives.
class Watch {
 public:
  Watch() {
    states();
    selectionSets();
    editor().addReactor(&reactor_);
  }
  ~Watch() { editor().removeReactor(&reactor_); }

 private:
  ClosingReactor reactor_;
};

}  // namespace

DrawingState& stateOf(AcDbDatabase& drawing) {
  [[maybe_unused]] static const Watch watch;
  DrawingState& state = states()[&drawing];
  state.drawing = &drawing;
  return state;
}

DrawingState* currentState() {
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  return drawing ? &stateOf(*drawing) : nullptr;
}

}  // namespace host
