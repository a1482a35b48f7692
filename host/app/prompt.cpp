#include "host/app/prompt.h"

#include "host/app/completion.h"
#include "host/app/idle.h"
#include "host/app/typed_line.h"

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <optional>

// The header of the line editor needs C's FILE declared first.
#include <cstdio>

#include <editline/readline.h>

#include "host/commands/typed_commands.h"
#include "host/console/command_line.h"
#include "platform/desktop/desktop.h"
#include "platform/terminal/terminal.h"
#include "platform/text/utf.h"

namespace host {
namespace {

std::atomic<bool> evaluating = false;

void onInterrupt() {
  platform::noteInterrupt();
  if (evaluating.load()) lisp::Interpreter::interrupt();
}

/// The line editor calls it again and again while it waits for a key.
int serveTimers() {
  constexpr std::chrono::milliseconds round(20);
  platform::desktop().runTimers();
  platform::waitForKey(round);
  return 0;
}

std::optional<std::string> readLine(bool interactive, const char* prompt) {
  if (interactive) {
    rl_event_hook = platform::desktop().hasTimers() ? serveTimers : nullptr;
    char* const line = readline(prompt);
    if (!line) return std::nullopt;
    std::string text = line;
    std::free(line);
    if (!text.empty()) add_history(text.c_str());
    return text;
  }
  std::string text;
  if (!std::getline(std::cin, text)) return std::nullopt;
  return text;
}

void runLine(const std::string& source) {
  platform::forgetInterrupts();
  try {
    evaluating = true;
    const auto value = lisp::withMemoryErrors([&] { return runTypedLine(source); });
    commandLine().freshLine();
    if (value) commandLine().show(*value + L"\n");
  } catch (const lisp::LispError& error) {
    showError(error);
  }
  evaluating = false;
  if (platform::isTerminal(platform::Stream::input)) finishOpenCommand();
  goIdle();
}

}  // namespace

bool goesOn(const std::string& text) {
  int depth = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '"') {
      for (++i; i < text.size() && text[i] != '"'; ++i) {
        if (text[i] == '\\') ++i;
      }
      if (i >= text.size()) return true;
    } else if (text.compare(i, 2, ";|") == 0) {
      const size_t end = text.find("|;", i + 2);
      if (end == std::string::npos) return true;
      i = end + 1;
    } else if (text[i] == ';') {
      i = std::min(text.find('\n', i), text.size());
    } else if (text[i] == '(') {
      ++depth;
    } else if (text[i] == ')') {
      --depth;
    }
  }
  return depth > 0;
}

void runPrompt(const std::string& historyFile) {
  const bool interactive = platform::isTerminal(platform::Stream::input);
  std::optional<platform::InterruptHandler> interrupts;
  if (interactive) {
    using_history();
    completeByTab();
    if (!historyFile.empty()) read_history(historyFile.c_str());
    interrupts.emplace(onInterrupt);
  }
  std::string source;
  while (const auto line = readLine(interactive, source.empty() ? "Command: " : "(_> ")) {
    source += *line + "\n";
    if (goesOn(source)) continue;
    if (source.find_first_not_of(" \t\r\n") != std::string::npos) runLine(source);
    source.clear();
  }
  if (!source.empty()) runLine(source);
  if (interactive && !historyFile.empty()) write_history(historyFile.c_str());
}

}  // namespace host
