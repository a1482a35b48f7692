#include "host/commands/typed_commands.h"

#include <algorithm>

#include "host/commands/command_runner.h"
#include "host/commands/commands.h"
#include "host/editor/user_input.h"

namespace host {

void finishOpenCommand() {
  while (!commandRunner().openName().empty()) commandRunner().give({std::nullopt});
}

namespace {

/// Each blank ends an input.
void answerOpenCommand(const std::wstring& typed) {
  std::vector<CommandInput::Argument> inputs;
  for (size_t at = 0; at < typed.size();) {
    const size_t blank = std::min(typed.find(L' ', at), typed.size());
    inputs.push_back(Typed{typed.substr(at, blank - at)});
    at = blank + 1;
  }
  commandRunner().give(std::move(inputs));
}

}  // namespace

bool runTypedCommand(const std::wstring& line) {
  const size_t begin = line.find_first_not_of(L" \t"), end = line.find_first_of(L"\r\n");
  if (begin == std::wstring::npos) return false;
  const std::wstring typed = line.substr(begin, end == std::wstring::npos ? end : end - begin);
  if (!commandRunner().openName().empty()) return answerOpenCommand(typed), true;
  const size_t blank = typed.find(L' ');
  const std::wstring name = typed.substr(0, blank);
  if (!findCommand(name)) return false;
  if (blank != std::wstring::npos) userInput().typeAhead(typed.substr(blank + 1));
  commandRunner().give({Typed{name}});
  finishOpenCommand();
  userInput().typeAhead({});
  return true;
}

}  // namespace host
