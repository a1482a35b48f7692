#include "host/app/prompt.h"

#include "host/app/idle.h"
#include "host/app/terminal_line.h"

#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <optional>

// The header of the line editor needs C's FILE declared first.
#include <cstdio>

#include <editline/readline.h>

#include "host/bridge/document_lisp.h"
#include "host/commands/typed_commands.h"
#include "host/console/command_line.h"
#include "host/documents/documents.h"
#include "host/lisp/printer.h"
#include "platform/text/utf.h"

namespace host {
namespace {

std::atomic<lisp::Interpreter*> running = nullptr;

void onInterrupt(int) {
  noteInterrupt();
  if (lisp::Interpreter* const interpreter = running.load()) interpreter->interrupt();
}

std::optional<std::string> readLine(bool interactive, const char* prompt) {
  if (interactive) {
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

/// The symbol that a line is, when it has a value: then it is LISP although a command has its name.
bool isBoundSymbol(const std::wstring& line) {
  const size_t end = line.find_last_not_of(L" \t\r\n");
  const lisp::Symbol* const symbol =
      currentInterpreter().find(end == std::wstring::npos ? std::wstring() : line.substr(0, end + 1));
  return symbol && symbol->value.isTrue();
}

bool runCommand(const std::string& source) {
  const std::wstring line = fromUtf8(source);
  if (isBoundSymbol(line)) return false;
  const DocumentManager::Busy busy(documents());
  return runTypedCommand(line);
}

void evaluate(const std::string& source) {
  forgetInterrupts();
  if (runCommand(source)) {
    commandLine().freshLine();
    return goIdle();
  }
  running = &currentInterpreter();
  try {
    const std::wstring value = lisp::printed(evaluateSource(source, L""), lisp::Style::readable);
    commandLine().freshLine();
    commandLine().show(value + L"\n");
  } catch (const lisp::LispError& error) {
    commandLine().freshLine();
    if (!error.handled) commandLine().show(L"; error: " + error.message + L"\n");
  }
  running = nullptr;
  if (isatty(STDIN_FILENO)) finishOpenCommand();
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
  const bool interactive = isatty(STDIN_FILENO) != 0;
  if (interactive) {
    using_history();
    if (!historyFile.empty()) read_history(historyFile.c_str());
    std::signal(SIGINT, onInterrupt);
  }
  std::string source;
  while (const auto line = readLine(interactive, source.empty() ? "Command: " : "(_> ")) {
    source += *line + "\n";
    if (goesOn(source)) continue;
    if (source.find_first_not_of(" \t\r\n") != std::string::npos) evaluate(source);
    source.clear();
  }
  if (!source.empty()) evaluate(source);
  if (interactive && !historyFile.empty()) write_history(historyFile.c_str());
}

}  // namespace host
