#include "host/commands/undo_steps.h"

#include "brx/db_database.h"

namespace host {
namespace {

using Kind = UndoStep::Kind;

/// Steps taken back can be made again until the drawing changes otherwise.
void dropStaleRedo(DrawingState& state) {
  if (changeCount(*state.drawing) != state.redoCount) state.redoSteps.clear();
}

Kind takeLastBack(DrawingState& state, RedoStep& redo) {
  const UndoStep last = state.undoSteps.back();
  state.undoSteps.pop_back();
  redo.parts.push_back({last.kind, takeBack(*state.drawing, last.mark)});
  return last.kind;
}

/// Takes steps back until `isWhole` says so of one; whether it did.
template <class IsWhole>
bool takeBackUntil(DrawingState& state, IsWhole isWhole) {
  dropStaleRedo(state);
  RedoStep redo;
  bool whole = false;
  while (!whole && !state.undoSteps.empty()) whole = isWhole(takeLastBack(state, redo));
  if (!redo.parts.empty()) state.redoSteps.push_back(std::move(redo));
  state.redoCount = changeCount(*state.drawing);
  return whole;
}

}  // namespace

void beginUndoStep(DrawingState& state) { addUndoMark(state, Kind::command); }

void addUndoMark(DrawingState& state, Kind kind) {
  state.undoSteps.push_back({kind, state.drawing->undoMark()});
}

bool undoOne(DrawingState& state) {
  int openGroups = 0;
  return takeBackUntil(state, [&](Kind kind) {
    if (kind == Kind::groupEnd) ++openGroups;
    if (kind == Kind::command && openGroups == 0) return true;
    // A group that was never ended is no step of its own.
    return kind == Kind::groupBegin && openGroups > 0 && --openGroups == 0;
  });
}

bool undoToMark(DrawingState& state) {
  return takeBackUntil(state, [](Kind kind) { return kind == Kind::userMark; });
}

UndoGroup::UndoGroup() : drawing_(acdbHostWorkingDatabase()) {
  DrawingState* const state = currentState();
  if (!state) return;
  place_ = state->undoSteps.size();
  changes_ = changeCount(*drawing_);
  addUndoMark(*state, Kind::groupBegin);
}

UndoGroup::~UndoGroup() {
  // The drawing may have been closed, or the group taken back with what was before it.
  DrawingState* const state = currentState();
  if (!state || state->drawing != drawing_ || state->undoSteps.size() <= place_) return;
  if (state->undoSteps[place_].kind != Kind::groupBegin) return;
  const bool isEmpty = state->undoSteps.size() == place_ + 1 && changeCount(*drawing_) == changes_;
  if (isEmpty) {
    drawing_->undoKeep(state->undoSteps.back().mark);
    state->undoSteps.pop_back();
  } else {
    addUndoMark(*state, Kind::groupEnd);
  }
}

bool redoOne(DrawingState& state) {
  dropStaleRedo(state);
  if (state.redoSteps.empty()) return false;
  const RedoStep step = std::move(state.redoSteps.back());
  state.redoSteps.pop_back();
  for (auto part = step.parts.rbegin(); part != step.parts.rend(); ++part) {
    addUndoMark(state, part->kind);
    makeAgain(*state.drawing, *part->changes);
  }
  state.redoCount = changeCount(*state.drawing);
  return true;
}

}  // namespace host
