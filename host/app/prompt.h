#pragma once

#include <string>

namespace host {

/// Reads forms from a person at the terminal, or from standard input, until its end. `historyFile` keeps
/// the lines between sessions; "" keeps none.
void runPrompt(const std::string& historyFile);

/// Runs a line, or a form of several, as a person types it where the host waits for a command, shows its
/// value and tells of errors. A command that asks for more is finished where `finishes` says so.
void runPromptLine(const std::string& source, bool finishes);

/// True when the text has a form that goes on behind its end.
bool goesOn(const std::string& text);

}  // namespace host
