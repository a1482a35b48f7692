#pragma once

#include <span>

#include "host/commands/command_input.h"

namespace host {

/// A command of the host: what it asks, and what it does with the answers.
struct Command {
  const wchar_t* name;
  Task<> (*body)(CommandInput& input);
  /// A step of its own for UNDO.
  bool undoable = true;
};

// A table for each subject.
std::span<const Command> drawCommands();
std::span<const Command> textCommands();
std::span<const Command> blockCommands();
std::span<const Command> editCommands();
std::span<const Command> layerCommands();
std::span<const Command> viewCommands();
std::span<const Command> fileCommands();
std::span<const Command> undoCommands();

/// Of all commands, in no order.
std::vector<std::wstring> commandNames();
/// By name, in any case, with the marks "_", ".", "'" and "-" before it left out; null for an unknown one.
const Command* findCommand(std::wstring_view name);

}  // namespace host
