#pragma once

#include "host/editor/drawing_state.h"

namespace host {

/// The places to which UNDO goes back: starts of commands, marks of the user, and groups that count as one.

void beginUndoStep(DrawingState& state);
void addUndoMark(DrawingState& state, UndoStep::Kind kind);
/// Takes back the last command or group; false when there is nothing left.
bool undoOne(DrawingState& state);
/// Takes everything back to the user's last mark, or to the start; whether there was a mark.
bool undoToMark(DrawingState& state);
/// What is done while this lives is one step; no step when that is nothing.
class UndoGroup {
 public:
  UndoGroup();
  ~UndoGroup();
  UndoGroup(const UndoGroup&) = delete;
  UndoGroup& operator=(const UndoGroup&) = delete;

 private:
  AcDbDatabase* drawing_;
  size_t place_ = 0;
  Adesk::UInt64 changes_ = 0;
};
/// Makes again what was taken back last; false when there is nothing, or the drawing was changed since.
bool redoOne(DrawingState& state);

}  // namespace host
