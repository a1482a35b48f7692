#pragma once

#include <string>

namespace host {

/// A line that begins with the name of a command, typed where the host waits for a command: runs it, with
/// the rest of the line as its first input, and asks the user for what is missing. False when the line is
/// something else.
bool runTypedCommand(const std::wstring& line);
/// Asks the user until the open command is done or cancelled.
void finishOpenCommand();

}  // namespace host
