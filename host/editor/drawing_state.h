#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/editor/request.h"

namespace host {

struct OpenCommand;

/// A place to which UNDO can go back.
struct UndoStep {
  enum class Kind { command, userMark, groupBegin, groupEnd } kind;
  /// Of the drawing's undo record.
  size_t mark;
};

/// What the editor keeps for a drawing as long as it is open.
struct DrawingState {
  explicit DrawingState(AcDbDatabase& owner) : drawing(&owner) {}
  /// Chosen last, and chosen before a command was given.
  Entities previous, chosenBefore;
  AcDbDatabase* drawing;
  /// The command that waits for input; null when none is open.
  std::shared_ptr<OpenCommand> command;
  std::wstring lastCommand;
  std::vector<UndoStep> undoSteps;
};

/// Of the current drawing; null when none is open.
DrawingState* currentState();
DrawingState& stateOf(AcDbDatabase& drawing);

}  // namespace host
