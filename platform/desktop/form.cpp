#include "platform/desktop/form.h"

#include <algorithm>
#include <stdexcept>

#include "platform/text/utf.h"

namespace platform {

Form::Form(std::wstring title, std::wstring name) : title_(std::move(title)), name_(std::move(name)) {}

Control& Form::add(int number, ControlKind kind, std::wstring text) {
  if (has(number))
    throw std::logic_error(toUtf8(title_) + ": control " + std::to_string(number) + " is there already");
  Control& made = controls_.emplace_back(*this, number, kind);
  made.text_ = std::move(text);
  const bool grows =
      kind == ControlKind::multiLineEdit || kind == ControlKind::listBox || kind == ControlKind::grid;
  return made.grow(grows ? 1 : 0);
}

Control& Form::addLabel(int number, std::wstring text) {
  return add(number, ControlKind::label, std::move(text));
}

Control& Form::addEdit(int number, std::wstring text) {
  return add(number, ControlKind::edit, std::move(text));
}

Control& Form::addMultiLineEdit(int number, std::wstring text) {
  return add(number, ControlKind::multiLineEdit, std::move(text));
}

Control& Form::addCheckBox(int number, std::wstring text, bool checked) {
  Control& made = add(number, ControlKind::checkBox, std::move(text));
  made.checked_ = checked;
  return made;
}

Control& Form::addButton(int number, std::wstring text, std::function<void()> onPress) {
  Control& made = add(number, ControlKind::button, std::move(text));
  made.onPress = std::move(onPress);
  return made;
}

Control& Form::addListBox(int number, std::vector<std::wstring> items) {
  Control& made = add(number, ControlKind::listBox, L"");
  made.items_ = std::move(items);
  return made;
}

Control& Form::addSwatches(int number, std::vector<uint32_t> colours, std::vector<std::wstring> names,
                           int perRow) {
  Control& made = add(number, ControlKind::swatches, L"");
  made.setColours(std::move(colours), std::move(names), perRow);
  return made;
}

Grid& Form::addGrid(int number, int columns, int fixedRows, int fixedColumns) {
  Control& made = add(number, ControlKind::grid, L"");
  made.grid_ = std::make_unique<Grid>(columns, fixedRows, fixedColumns);
  made.grid_->setFocusGrabber([this, number] { setFocus(number); });
  return *made.grid_;
}

void Form::addOkAndCancel() {
  addButton(okButton, L"&OK");
  addButton(cancelButton, L"&Cancel");
}

Control* Form::find(int number) const {
  const auto found = std::find_if(controls_.begin(), controls_.end(),
                                  [&](const Control& each) { return each.number() == number; });
  return found == controls_.end() ? nullptr : const_cast<Control*>(&*found);
}

Control& Form::control(int number) const {
  if (Control* const found = find(number)) return *found;
  throw std::logic_error(toUtf8(title_) + ": no control " + std::to_string(number));
}

Grid& Form::grid(int number) const {
  if (Grid* const found = control(number).grid()) return *found;
  throw std::logic_error(toUtf8(title_) + ": control " + std::to_string(number) + " is no grid");
}

void Form::setTitle(std::wstring title) {
  title_ = std::move(title);
  if (view_) view_->titleChanged();
}

void Form::setFocus(int number) {
  Control& target = control(number);
  focus_ = number;
  if (view_) view_->focusChanged();
  if (target.kind() == ControlKind::edit) selectText(number);
}

void Form::selectText(int number) {
  if (view_) view_->textSelected(control(number));
}

void Form::drawNow() {
  if (view_) view_->drawNow();
}

void Form::close(int button) {
  if (isClosed()) return;
  endedBy_ = button;
  if (view_) view_->closed();
}

void Form::setView(FormView* view) { view_ = view; }

void Form::open() { endedBy_.reset(); }

}  // namespace platform
