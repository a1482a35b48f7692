#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/lisp/interpreter.h"

namespace host {

/// What the program does for its window.
struct WindowServices {
  /// Runs a line as a person types it where the host waits for a command, and tells of errors.
  std::function<void(const std::string& line)> runLine;
  /// Whether a text has a form that goes on behind its end.
  std::function<bool(const std::string& text)> goesOn;
  /// What a word may become at the end of a typed line.
  std::function<std::vector<std::string>(const std::string& lineBefore, const std::string& word)> completions;
  /// Writes the current drawing into a file whose ending names the kind; false with the problem.
  std::function<bool(const std::string& file, std::string& problem)> exportDrawing;
  /// Keeps typed lines between sessions; "" keeps none.
  std::string historyFile;
  /// Nobody sits before the window: its prompts are answered by scripts, or cancelled.
  bool isScripted = false;
};

/// The host's main window. As long as it lives, it is the person before the host, the desktop's main window
/// and where the command line is shown.
class Window {
 public:
  virtual ~Window() = default;
  /// Gives LISP the functions that play a person before the window.
  virtual void defineFunctions(lisp::Interpreter& interpreter) = 0;
  virtual void show() = 0;
  /// Between evaluations: shows what has changed, and plays what scripts have laid ready.
  virtual void goIdle() = 0;
  /// Serves the person until the window is closed.
  virtual void run() = 0;
};

}  // namespace host
