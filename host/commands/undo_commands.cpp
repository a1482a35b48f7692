#include "host/commands/commands.h"
#include "host/commands/undo_steps.h"

namespace host {
namespace {

Task<> u(CommandInput& input) {
  if (!undoOne(*currentState())) input.say(L"\nEverything has been undone.");
  co_return;
}

Task<> undo(CommandInput& input) {
  const Answer answer = co_await input.number(
      Wanted::integer, L"\nEnter the number of operations to undo or [BEgin/End/Mark/Back] <1>: ", {},
      L"BEgin Group End Mark Back", 6);
  DrawingState& state = *currentState();
  if (answer.status != RTKWORD) {
    for (int count = answer.given() ? answer.integer : 1; count > 0; --count) {
      if (undoOne(state)) continue;
      input.say(L"\nEverything has been undone.");
      break;
    }
  } else if (answer.text == L"Mark") {
    addUndoMark(state, UndoStep::Kind::userMark);
  } else if (answer.text == L"Back") {
    if (!undoToMark(state)) input.say(L"\nEverything has been undone.");
  } else if (answer.text == L"End") {
    addUndoMark(state, UndoStep::Kind::groupEnd);
  } else {
    addUndoMark(state, UndoStep::Kind::groupBegin);
  }
}

Task<> redo(CommandInput& input) {
  if (!redoOne(*currentState())) input.say(L"\nEverything has been redone.");
  co_return;
}

constexpr Command rows[] = {{L"U", u, false}, {L"UNDO", undo, false}, {L"REDO", redo, false}};

}  // namespace

std::span<const Command> undoCommands() { return rows; }

}  // namespace host
