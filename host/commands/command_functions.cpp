#include "host/commands/command_functions.h"

#include "host/commands/command_runner.h"
#include "host/documents/documents.h"
#include "host/documents/variables.h"
#include "host/editor/drawing_state.h"
#include "host/editor/user_input.h"

namespace host {
namespace {

using lisp::Call;
using lisp::Value;

const wchar_t* const pauseText = L"\\";

/// Numbers count as typed: angles are in the drawing's units.
CommandInput::Argument argumentOf(const Value& value) {
  if (value.isNil()) return Cancel{};
  if (value.isText() && value.text() == pauseText) return std::nullopt;
  InputItem item = itemOf(value);
  if (auto* const number = std::get_if<Number>(&item)) number->typed = true;
  return item;
}

/// Whether all commands could be run as far as there were arguments.
bool run(const Call& call) {
  if (call.count() == 0) {
    commandRunner().cancel();
    return true;
  }
  std::vector<CommandInput::Argument> arguments;
  for (const Value& each : call.args) {
    CommandInput::Argument argument = argumentOf(each);
    const bool cancels = argument && std::holds_alternative<Cancel>(*argument);
    if (!cancels) {
      arguments.push_back(std::move(argument));
      continue;
    }
    commandRunner().give(std::exchange(arguments, {}));
    commandRunner().cancel();
  }
  const CommandResult result = commandRunner().give(std::move(arguments));
  if (result == CommandResult::cancelledByUser) call.lisp.fail(L"Function cancelled");
  return result == CommandResult::done;
}

Value command(const Call& call) {
  run(call);
  return {};
}

Value commandWithResult(const Call& call) { return call.lisp.truth(run(call)); }

/// The command must be complete: what is left open is cancelled.
Value commandAtOnce(const Call& call) {
  run(call);
  if (!commandRunner().openName().empty()) commandRunner().cancel();
  return {};
}

}  // namespace

void defineCommandFunctions(lisp::Interpreter& interpreter) {
  documents().setWaitingTest([](AcDbDatabase& drawing) { return stateOf(drawing).command != nullptr; });
  interpreter.define(L"command", command);
  interpreter.define(L"vl-cmdf", commandWithResult);
  interpreter.define(L"command-s", commandAtOnce);
  defineComputedVariable(L"CMDNAMES", [] { return commandRunner().openName(); });
  defineComputedVariable(L"CMDACTIVE", [] { return commandRunner().openName().empty() ? 0 : 1; });
  interpreter.intern(L"PAUSE")->value = Value(std::wstring_view(pauseText));
}

}  // namespace host
