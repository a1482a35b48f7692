#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>

#include "platform/desktop/control.h"
#include "platform/desktop/form_layout.h"

namespace platform {

/// A dialog as a description with handlers; `Desktop::runDialog` shows it, whatever stands for a person
/// there.
///
///     Form form(L"Layer System Options");
///     form.addEdit(1056).setText(name);
///     form.addOkAndCancel();
///     form.setLayout(column({fields({field(L"Layer System:", 1056)}), okAndCancel()}));
///     form.control(okButton).onPress = [&] { store(form.text(1056)), form.close(); };
///     form.setFocus(1056);
///     const int result = desktop().runDialog(form);
///
/// A front end turns what a person does into calls of `FormPerson` and `GridPerson`, so that handlers hear
/// the same of all of them.

/// Numbers of the buttons that the Enter key and Escape press, and results of `runDialog`.
enum StandardButton : int { okButton = 1, cancelButton = 2 };
/// The result of a dialog that couldn't be shown.
inline constexpr int dialogFailed = -1;

/// What shows a form. It asks the form for what it draws; these calls only tell that something is new.
class FormView {
 public:
  virtual ~FormView() = default;
  virtual void controlChanged(Control& control) = 0;
  virtual void titleChanged() = 0;
  virtual void focusChanged() = 0;
  virtual void textSelected(Control& control) = 0;
  virtual void closed() = 0;
  /// Draws at once what is new.
  virtual void drawNow() = 0;
};

class Form {
 public:
  /// Under the name a front end keeps the window's size; without one it keeps none.
  explicit Form(std::wstring title, std::wstring name = {});
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  /// Runs when the window is made and before it is seen: sizes of columns can be asked and set.
  std::function<void()> onStart;

  const std::wstring& title() const { return title_; }
  void setTitle(std::wstring title);
  const std::wstring& name() const { return name_; }

  // Controls. Numbers are the program's; a number that is there already throws std::logic_error.

  Control& addLabel(int number, std::wstring text);
  Control& addEdit(int number, std::wstring text = {});
  Control& addMultiLineEdit(int number, std::wstring text = {});
  Control& addCheckBox(int number, std::wstring text, bool checked = false);
  Control& addButton(int number, std::wstring text, std::function<void()> onPress = {});
  Control& addListBox(int number, std::vector<std::wstring> items = {});
  Control& addSwatches(int number, std::vector<uint32_t> colours, std::vector<std::wstring> names,
                       int perRow);
  Grid& addGrid(int number, int columns, int fixedRows = 1, int fixedColumns = 0);
  /// 1 "&OK" and 2 "&Cancel".
  void addOkAndCancel();

  bool has(int number) const { return find(number) != nullptr; }
  /// Null when there is no such control.
  Control* find(int number) const;
  /// Throws std::logic_error when there is no such control.
  Control& control(int number) const;
  Grid& grid(int number) const;
  const std::wstring& text(int number) const { return control(number).text(); }
  /// In the order in which they were added.
  const std::deque<Control>& controls() const { return controls_; }
  std::deque<Control>& controls() { return controls_; }

  const Layout& layout() const { return layout_; }
  void setLayout(Layout layout) { layout_ = std::move(layout); }

  /// 0 while none has it; then a front end gives it to the first that can have it.
  int focus() const { return focus_; }
  /// Of an edit, selects its text.
  void setFocus(int number);
  void selectText(int number);
  /// Which button Enter presses; 1 unless told.
  int defaultButton() const { return defaultButton_; }
  void setDefaultButton(int number) { defaultButton_ = number; }

  /// Shows at once what was changed, for work that keeps the person waiting.
  void drawNow();

  /// Ends the dialog: as cancelled by 2, else as done. Which button it was stays in `endedBy`, so that a
  /// result of a button's number never looks like a failure.
  void close(int button = okButton);
  bool isClosed() const { return endedBy_.has_value(); }
  int endedBy() const { return endedBy_.value_or(0); }

  // For front ends

  void setView(FormView* view);
  FormView* view() const { return view_; }
  /// Before each showing.
  void open();
  /// What `runDialog` gives for a form that has been closed: 1 or 2.
  int result() const { return endedBy() == cancelButton ? cancelButton : okButton; }

 private:
  friend class Control;
  friend class FormPerson;

  Control& add(int number, ControlKind kind, std::wstring text);

  std::wstring title_, name_;
  std::deque<Control> controls_;
  Layout layout_;
  int focus_ = 0, defaultButton_ = okButton;
  std::optional<int> endedBy_;
  FormView* view_ = nullptr;
};

}  // namespace platform
