#pragma once

#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/desktop/form.h"

namespace platform {

/// Dialogs without a person: a script of actions for one dialog, and what they gave.

/// T and nil, integers, texts, and in the log lists.
struct ScriptValue;
using ScriptList = std::vector<ScriptValue>;
struct ScriptValue : std::variant<bool, int, std::wstring, ScriptList> {
  using variant::variant;
};

struct ScriptAction {
  std::wstring verb;
  ScriptList arguments;
};
using FormScript = std::vector<ScriptAction>;

/// Empty when there is such an action and it takes these arguments, else what is wrong.
std::wstring problemOf(const ScriptAction& action);

/// How a script reaches a form: on the description alone, or through widgets. False means that nothing
/// happened. Reading gives what is shown.
class FormHands {
 public:
  virtual ~FormHands() = default;

  virtual bool press(int button) = 0;
  virtual bool setText(int edit, const std::wstring& text) = 0;
  virtual bool check(int box, bool checked) = 0;
  virtual bool select(int list, int index) = 0;
  virtual bool moveTo(int grid, GridCell cell) = 0;
  virtual bool openCell(int grid, GridCell cell) = 0;
  /// Into the open cell.
  virtual bool typeInCell(int grid, const std::wstring& text) = 0;
  virtual bool commitCell(int grid) = 0;
  virtual bool choose(int grid, const std::wstring& entry) = 0;
  virtual bool fold(int grid, int row, bool folded) = 0;
  /// "Enter" or "Escape".
  virtual bool key(const std::wstring& name) = 0;
  virtual void cancel() = 0;
  /// A picture of the window; empty on success, else what failed. A size of 0 leaves the window's.
  virtual std::wstring shot(const std::wstring& file, int width, int height, bool dark) = 0;

  virtual std::wstring title() = 0;
  virtual std::wstring text(int control) = 0;
  virtual bool isChecked(int box) = 0;
  virtual int selected(int list) = 0;
  virtual bool isEnabled(int control) = 0;
  virtual bool isVisible(int control) = 0;
  virtual int focus() = 0;
  virtual std::wstring cellText(int grid, GridCell cell) = 0;
};

/// Plays the actions in order, until the form is closed or they run out; then it is cancelled. What they ask,
/// and a line for each that could not be done, goes to the end of `log`. Gives the result of the dialog.
int playScript(Form& form, const FormScript& script, FormHands& hands, ScriptList& log);

/// Draws a form as a window; empty on success, else what failed.
using DrawForm =
    std::function<std::wstring(Form&, const std::wstring& file, int width, int height, bool dark)>;

/// Shows the form to a script, without widgets.
int playOnForm(Form& form, const FormScript& script, const DrawForm& draw, ScriptList& log);

}  // namespace platform
