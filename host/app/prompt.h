#pragma once

#include <string>

namespace host {

/// Reads forms from a person at the terminal, or from standard input, until its end. `historyFile` keeps
/// the lines between sessions; "" keeps none.
void runPrompt(const std::string& historyFile);

/// True when the text has a form that goes on behind its end.
bool goesOn(const std::string& text);

}  // namespace host
