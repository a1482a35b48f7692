#include "host/app/terminal_line.h"

#include "host/bridge/document_lisp.h"
#include "host/console/command_line.h"
#include "platform/desktop/desktop.h"
#include "platform/terminal/terminal.h"
#include "platform/text/utf.h"

namespace host {
namespace {

/// How often timers are looked at where there are any.
constexpr std::chrono::milliseconds timerRound(20);

platform::Awaited waitServingTimers() {
  while (true) {
    const bool hasTimers = platform::desktop().hasTimers();
    const auto found = platform::waitForTerminal(hasTimers ? std::optional(timerRound) : std::nullopt);
    if (found != platform::Awaited::nothing) return found;
    platform::desktop().runTimers();
  }
}

}  // namespace

std::optional<std::wstring> readTerminalLine() {
  const platform::InterruptHandler isNoted(platform::noteInterrupt);
  std::string line;
  while (waitServingTimers() == platform::Awaited::input) {
    const std::optional<char> byte = platform::readTerminalByte();
    if (!byte && line.empty()) return std::nullopt;
    if (!byte || *byte == '\n') {
      // The terminal has shown the line with its end.
      commandLine().cursorAtLineBegin();
      return fromUtf8(line);
    }
    line += *byte;
  }
  // The interrupt was for the prompt, and not for what runs behind it.
  platform::forgetInterrupts();
  lisp::Interpreter::forgetEnd();
  return std::nullopt;
}

}  // namespace host
