#pragma once

#include <functional>
#include <optional>
#include <string>

#include "host/editor/input_source.h"
#include "host/editor/person.h"
#include "host/lisp/value.h"

namespace host {

/// The user: the queue that scripts fill, and behind it a terminal. Without either, every prompt counts as
/// cancelled, and standard error says so.
class UserInput : public InputSource {
 public:
  void prompt(const std::wstring& text) override;
  void say(const std::wstring& text) override;
  bool ready() const override { return true; }
  InputItem take(const Request& request) override;
  bool endsSelection() const override;
  /// A prompt that the user sees already.
  void promptShown(const std::wstring& text);
  /// What the user has typed before anything asked for it; each blank ends an input.
  void typeAhead(std::wstring text) { typedAhead_ = std::move(text); }

 private:
  InputItem takeFromPerson(const Request& request);
  std::optional<InputItem> evaluated(const std::wstring& line);
  InputItem typedItem(std::wstring line, Wanted wanted);

  std::wstring shown_, typedAhead_;
};

UserInput& userInput();

/// A person who types lines; nothing when the input ended or was interrupted.
using LineReader = std::function<std::optional<std::wstring>()>;
void setLineReader(LineReader reader);

/// A value of a program as input: points, numbers, texts, entity names with or without a point, lists of
/// them, selection sets, the symbols ENTER and CANCEL, and "(MOVE point)" for a move of the cursor.
InputItem itemOf(const lisp::Value& value);

}  // namespace host
