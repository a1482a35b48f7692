#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/desktop/grid.h"

namespace platform {

class Form;

enum class ControlKind { label, edit, multiLineEdit, checkBox, button, listBox, swatches, grid };

/// One control of a form, found by its number. Texts of labels, buttons and check boxes mark the letter that
/// leads to them by "&"; "&&" is the sign itself.
///
/// What the program sets is silent; `onChange` and `onPress` are for what a person does.
class Control {
 public:
  Control(Form& form, int number, ControlKind kind) : form_(form), number_(number), kind_(kind) {}
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  /// A person changed the text, the check, or the selection of a list or of swatches.
  std::function<void()> onChange;
  /// A person pressed the button. Without this, 1 and 2 close the form.
  std::function<void()> onPress;

  int number() const { return number_; }
  ControlKind kind() const { return kind_; }

  const std::wstring& text() const { return text_; }
  void setText(std::wstring text);
  bool isChecked() const { return checked_; }
  void setChecked(bool checked);
  bool isEnabled() const { return enabled_; }
  void setEnabled(bool enabled);
  bool isVisible() const { return visible_; }
  void setVisible(bool visible);
  const std::wstring& tip() const { return tip_; }
  void setTip(std::wstring tip);

  // List boxes and swatches: entries count from 0, -1 is none.

  const std::vector<std::wstring>& items() const { return items_; }
  /// Selects none.
  void setItems(std::vector<std::wstring> items);
  void addItem(std::wstring item);
  /// The selection of a later entry follows it; that of the removed one ends.
  void removeItem(int index);
  int selected() const { return selected_; }
  void select(int index);
  /// The first entry that is this text, as a whole and without regard to case; -1 when none is.
  int findItem(const std::wstring& text) const;

  // Swatches

  /// 0xRRGGBB of each entry, whose text is its tip.
  const std::vector<uint32_t>& colours() const { return colours_; }
  void setColours(std::vector<uint32_t> colours, std::vector<std::wstring> names, int perRow);
  int perRow() const { return perRow_; }

  /// Of a grid, else null.
  Grid* grid() const { return grid_.get(); }

  // Look

  /// Wanted size in letters and lines; 0 leaves it to the front end.
  Control& size(int letters, int lines = 0) { return letters_ = letters, lines_ = lines, *this; }
  int letters() const { return letters_; }
  int lines() const { return lines_; }
  /// The share of the room that a larger window gives: by default 1 for multi-line edits, list boxes and
  /// grids, in both directions, and 0 for others.
  Control& grow(int share) { return grow_ = share, *this; }
  int grow() const { return grow_; }

 private:
  friend class Form;
  friend class FormPerson;
  void changed();

  Form& form_;
  int number_;
  ControlKind kind_;
  std::wstring text_, tip_;
  bool checked_ = false, enabled_ = true, visible_ = true;
  std::vector<std::wstring> items_;
  std::vector<uint32_t> colours_;
  int selected_ = -1, perRow_ = 1;
  std::unique_ptr<Grid> grid_;
  int letters_ = 0, lines_ = 0, grow_ = 0;
};

}  // namespace platform
