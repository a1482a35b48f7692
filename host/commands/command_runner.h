#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/commands/command_input.h"

namespace host {

enum class CommandResult { done, failed, cancelledByUser };

/// The command that is open in the current drawing, which keeps it between calls.
class CommandRunner {
 public:
  /// Gives arguments to the open command, and starts commands by the names that follow. After a name that
  /// is unknown, which the host says, and a command that didn't come to its end, the rest is dropped.
  CommandResult give(std::vector<CommandInput::Argument> arguments);
  /// Ends the open command, if there is one.
  void cancel();
  /// "" when none is open.
  std::wstring openName() const;
};

CommandRunner& commandRunner();

}  // namespace host
