#include "platform/desktop/form_person.h"

#include <algorithm>

#include "platform/desktop/grid_person.h"

namespace platform {

Control* FormPerson::usable(int number, std::initializer_list<ControlKind> kinds) const {
  Control* const found = form_.find(number);
  const bool fits = found && found->isEnabled() && found->isVisible() && !form_.isClosed() &&
                    std::find(kinds.begin(), kinds.end(), found->kind()) != kinds.end();
  return fits ? found : nullptr;
}

void FormPerson::commitOpenCells(const Grid* except) {
  for (Control& each : form_.controls()) {
    if (each.grid() && each.grid() != except) GridPerson(*each.grid()).commit();
  }
}

void FormPerson::abandonOpenCells() {
  for (Control& each : form_.controls()) {
    if (each.grid()) GridPerson(*each.grid()).abandon();
  }
}

bool FormPerson::press(int button) {
  if (!usable(button, {ControlKind::button})) return false;
  button == cancelButton ? abandonOpenCells() : commitOpenCells();
  // What hears of the cell's end may disable the button.
  Control* const pressed = usable(button, {ControlKind::button});
  if (!pressed) return false;
  if (pressed->onPress) {
    pressed->onPress();
  } else if (button == okButton || button == cancelButton) {
    form_.close(button);
  }
  return true;
}

void FormPerson::cancel() {
  if (press(cancelButton) || form_.isClosed()) return;
  if (!form_.has(cancelButton)) form_.close(cancelButton);
}

bool FormPerson::type(int edit, std::wstring text) {
  Control* const target = usable(edit, {ControlKind::edit, ControlKind::multiLineEdit});
  if (!target) return false;
  commitOpenCells();
  form_.focus_ = edit;
  target->text_ = std::move(text);
  if (target->onChange) target->onChange();
  return true;
}

bool FormPerson::check(int box, bool checked) {
  Control* const target = usable(box, {ControlKind::checkBox});
  if (!target) return false;
  commitOpenCells();
  form_.focus_ = box;
  if (target->checked_ == checked) return true;
  target->setChecked(checked);
  if (target->onChange) target->onChange();
  return true;
}

bool FormPerson::select(int list, int index) {
  Control* const target = usable(list, {ControlKind::listBox, ControlKind::swatches});
  if (!target || index < 0 || index >= static_cast<int>(target->items().size())) return false;
  commitOpenCells();
  form_.focus_ = list;
  if (target->selected_ == index) return true;
  target->select(index);
  if (target->onChange) target->onChange();
  return true;
}

bool FormPerson::focusOn(int number) {
  Control* const found = form_.find(number);
  if (!found || !found->isEnabled() || !found->isVisible()) return false;
  commitOpenCells(found->grid());
  form_.focus_ = number;
  return true;
}

}  // namespace platform
