#include "host/commands/command_runner.h"

#include <array>

#include "host/commands/commands.h"
#include "host/commands/undo_steps.h"
#include "host/console/command_line.h"
#include "host/editor/drawing_state.h"
#include "host/rx/editor.h"
#include "platform/text/letters.h"

namespace host {

/// A command on its way.
struct OpenCommand {
  explicit OpenCommand(const Command& command) : command(command), work(command.body(input)) {}
  const Command& command;
  CommandInput input;
  Task<> work;
  bool started = false, running = false;
};

namespace {

std::wstring withoutMarks(std::wstring_view name) {
  const size_t begin = name.find_first_not_of(L"_.'-");
  return upperCased(
      std::wstring(begin == std::wstring_view::npos ? std::wstring_view() : name.substr(begin)));
}

void tell(void (AcEditorReactor::*notice)(const ACHAR*), const Command& command) {
  editor().tell([&](AcEditorReactor& each) { (each.*notice)(command.name); });
}

/// The name that starts a command; Enter repeats the last one.
std::optional<std::wstring> nameIn(const CommandInput::Argument& argument, const DrawingState& state) {
  if (!argument) return std::nullopt;
  if (const auto* typed = std::get_if<Typed>(&*argument)) return typed->text;
  if (std::holds_alternative<Enter>(*argument) && !state.lastCommand.empty()) return state.lastCommand;
  return std::nullopt;
}

bool start(DrawingState& state, const CommandInput::Argument& argument) {
  const auto name = nameIn(argument, state);
  const Command* const command = name ? findCommand(*name) : nullptr;
  if (!command) {
    commandLine().print(L"\nUnknown command \"" + (name ? withoutMarks(*name) : std::wstring()) + L"\".");
    return false;
  }
  state.lastCommand = command->name;
  if (command->undoable) beginUndoStep(state);
  tell(&AcEditorReactor::commandWillStart, *command);
  state.command = std::make_shared<OpenCommand>(*command);
  return true;
}

/// Runs the command until it is done or needs more; whether it is done.
bool goOn(OpenCommand& open) {
  open.running = true;
  if (!open.started) {
    open.started = true;
    open.work.start();
  } else {
    open.input.waiting.resume();
  }
  open.running = false;
  return open.work.done();
}

/// Ends what `goOn` has done.
CommandResult finish(DrawingState& state) {
  const std::shared_ptr<OpenCommand> done = std::exchange(state.command, nullptr);
  try {
    done->work.result();
    tell(&AcEditorReactor::commandEnded, done->command);
    return CommandResult::done;
  } catch (const CommandCancelled&) {
    commandLine().print(L"*Cancel*");
    tell(&AcEditorReactor::commandCancelled, done->command);
    return CommandResult::cancelledByUser;
  } catch (const CommandFailed&) {
    tell(&AcEditorReactor::commandCancelled, done->command);
    return CommandResult::failed;
  }
}

}  // namespace

namespace {

auto commandTables() {
  return std::array{drawCommands(), textCommands(), blockCommands(), editCommands(), layerCommands(),
                    viewCommands(), fileCommands(), undoCommands(),  solidCommands()};
}

}  // namespace

std::vector<std::wstring> commandNames() {
  std::vector<std::wstring> names;
  for (const auto table : commandTables()) {
    for (const Command& each : table) names.push_back(each.name);
  }
  return names;
}

const Command* findCommand(std::wstring_view name) {
  const std::wstring wanted = withoutMarks(name);
  for (const auto table : commandTables()) {
    for (const Command& each : table) {
      if (wanted == each.name) return &each;
    }
  }
  return nullptr;
}

CommandResult CommandRunner::give(std::vector<CommandInput::Argument> arguments) {
  DrawingState* const state = currentState();
  if (!state) return CommandResult::failed;
  if (state->command && state->command->running) {
    commandLine().print(L"\nA command is running.");
    return CommandResult::failed;
  }
  std::deque<CommandInput::Argument> rest(std::make_move_iterator(arguments.begin()),
                                          std::make_move_iterator(arguments.end()));
  while (!rest.empty() || (state->command && !state->command->started)) {
    if (!state->command) {
      const CommandInput::Argument name = std::move(rest.front());
      rest.pop_front();
      if (!start(*state, name)) return CommandResult::failed;
    }
    // The record lives on although the command may close the drawing's own hold on it.
    const std::shared_ptr<OpenCommand> open = state->command;
    std::move(rest.begin(), rest.end(), std::back_inserter(open->input.arguments));
    rest.clear();
    if (!goOn(*open)) return CommandResult::done;
    rest = std::exchange(open->input.arguments, {});
    if (const CommandResult result = finish(*state); result != CommandResult::done) return result;
  }
  return CommandResult::done;
}

void CommandRunner::cancel() {
  DrawingState* const state = currentState();
  if (!state || !state->command || state->command->running) return;
  const std::shared_ptr<OpenCommand> open = std::exchange(state->command, nullptr);
  commandLine().print(L"*Cancel*");
  tell(&AcEditorReactor::commandCancelled, open->command);
}

std::wstring CommandRunner::openName() const {
  const DrawingState* const state = currentState();
  return state && state->command ? state->command->command.name : std::wstring();
}

CommandRunner& commandRunner() {
  static CommandRunner instance;
  return instance;
}

}  // namespace host
