#pragma once

#include "platform/desktop/form_script.h"
#include "platform/desktop/qt/form_window.h"

class QLineEdit;

namespace platform {

/// Works on a form's widgets by keys and clicks, and reads what they show.
class WidgetHands : public FormHands {
 public:
  explicit WidgetHands(FormWindow& window) : window_(window) {}

  bool press(int button) override;
  bool setText(int edit, const std::wstring& text) override;
  bool check(int box, bool checked) override;
  bool select(int list, int index) override;
  bool moveTo(int grid, GridCell cell) override;
  bool openCell(int grid, GridCell cell) override;
  bool typeInCell(int grid, const std::wstring& text) override;
  bool commitCell(int grid) override;
  bool choose(int grid, const std::wstring& entry) override;
  bool fold(int grid, int row, bool folded) override;
  bool key(const std::wstring& name) override;
  void cancel() override;
  std::wstring shot(const std::wstring& file, int width, int height, bool dark) override;

  std::wstring title() override;
  std::wstring text(int control) override;
  bool isChecked(int box) override;
  int selected(int list) override;
  bool isEnabled(int control) override;
  bool isVisible(int control) override;
  int focus() override;
  std::wstring cellText(int grid, GridCell cell) override;

 private:
  /// Does it, lets the window follow, and tells whether a person's deed came of it.
  bool acted(const std::function<void()>& deed);
  bool usable(int number) const;
  QLineEdit* cellEdit(int grid) const;

  FormWindow& window_;
};

/// Draws the window as it is into a PNG file; empty on success, else what failed. A size of 0 leaves the
/// window's.
std::wstring drawWindow(FormWindow& window, const std::wstring& file, int width, int height, bool dark);

}  // namespace platform
