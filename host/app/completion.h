#pragma once

#include <string>
#include <vector>

namespace host {

/// What a word may become at the end of a typed line, in order: commands and their programs' fellows at its
/// begin, functions and symbols with a value behind a parenthesis, and within quotes files, or the names of
/// variables where `getvar` or `setvar` asks for one.
std::vector<std::string> completionsOf(const std::string& lineBefore, const std::string& word);

/// Makes the line editor's Tab key complete.
void completeByTab();

}  // namespace host
