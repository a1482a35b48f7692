#include "host/editor/input_source.h"

#include "host/console/command_line.h"

namespace host {

void InputSource::show(const std::wstring& prompt) {
  const bool behindTold = toldUpTo_ == commandLine().printed();
  if (behindTold && !prompt.empty() && !prompt.starts_with(L'\n')) commandLine().print(L"\n");
  commandLine().print(prompt);
}

void InputSource::tell(const std::wstring& text) {
  commandLine().print(text);
  toldUpTo_ = commandLine().printed();
}

}  // namespace host
