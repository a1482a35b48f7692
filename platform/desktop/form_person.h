#pragma once

#include <string>

#include "platform/desktop/form.h"

namespace platform {

/// What a person does to a form. A cell that is open in a grid is first committed, or, by Cancel, abandoned.
/// False means that nothing happened, since the control isn't there, is disabled, hidden or of another kind.
class FormPerson {
 public:
  explicit FormPerson(Form& form) : form_(form) {}

  bool press(int button);
  /// Presses the default button.
  bool pressEnter() { return press(form_.defaultButton()); }
  /// Escape and the close box; they work even where there is no such button.
  void cancel();
  bool type(int edit, std::wstring text);
  bool check(int box, bool checked);
  bool select(int list, int index);
  /// The focus went to the control.
  bool focusOn(int number);
  void commitOpenCells(const Grid* except = nullptr);
  void abandonOpenCells();

 private:
  Control* usable(int number, std::initializer_list<ControlKind> kinds) const;

  Form& form_;
};

}  // namespace platform
