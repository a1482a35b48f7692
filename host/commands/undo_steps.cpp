#include "host/commands/undo_steps.h"

#include "brx/db_database.h"

namespace host {
namespace {

using Kind = UndoStep::Kind;

Kind takeBack(DrawingState& state) {
  const UndoStep last = state.undoSteps.back();
  state.undoSteps.pop_back();
  state.drawing->undoTo(last.mark);
  return last.kind;
}

}  // namespace

void beginUndoStep(DrawingState& state) { addUndoMark(state, Kind::command); }

void addUndoMark(DrawingState& state, Kind kind) {
  state.undoSteps.push_back({kind, state.drawing->undoMark()});
}

bool undoOne(DrawingState& state) {
  int openGroups = 0;
  while (!state.undoSteps.empty()) {
    const Kind kind = takeBack(state);
    if (kind == Kind::groupEnd) ++openGroups;
    if (kind == Kind::command && openGroups == 0) return true;
    // A group that was never ended is no step of its own.
    if (kind == Kind::groupBegin && openGroups > 0 && --openGroups == 0) return true;
  }
  return false;
}

bool undoToMark(DrawingState& state) {
  while (!state.undoSteps.empty()) {
    if (takeBack(state) == Kind::userMark) return true;
  }
  return false;
}

}  // namespace host
