#pragma once

#include <deque>
#include <exception>
#include <optional>

#include "host/editor/acquisition.h"
#include "host/editor/selection.h"

namespace host {

/// The user cancelled at a prompt of the command, which ends it.
struct CommandCancelled : std::exception {};
/// The command can't go on, and has said why.
struct CommandFailed : std::exception {};

/// What a command asks, and what it is given for it: the arguments that LISP has ready, in order. A command
/// that finds none waits for the next call. Prompts are shown as the variable CMDECHO says.
class CommandInput : public InputSource {
 public:
  /// An argument; nothing is PAUSE, for which the user is asked.
  using Argument = std::optional<InputItem>;
  std::deque<Argument> arguments;

  void prompt(const std::wstring& text) override;
  void say(const std::wstring& text) override;
  /// What a person must know, whatever CMDECHO says: something was not done.
  using InputSource::tell;
  /// Ends the command, and says why, whatever CMDECHO says.
  [[noreturn]] void fail(const std::wstring& reason);
  bool ready() const override { return !arguments.empty(); }
  /// Throws `CommandCancelled`.
  InputItem take(const Request& request) override;

  // The prompts of commands. Points in the plane and measures from `base`, where there is one.
  Task<Answer> point(std::wstring prompt, std::optional<AcGePoint3d> base = {}, std::wstring keywords = {},
                     int bits = 0);
  Task<Answer> number(Wanted wanted, std::wstring prompt, std::optional<AcGePoint3d> base = {},
                      std::wstring keywords = {}, int bits = 0);
  Task<Answer> keyword(std::wstring prompt, std::wstring keywords);
  /// A line of text, blanks included.
  Task<std::wstring> text(std::wstring prompt);
  /// What was chosen before the command, or what is chosen now, without what lies on locked layers.
  Task<Entities> objects();

 private:
  std::wstring prompted_;
};

}  // namespace host
