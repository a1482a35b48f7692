#include "platform/desktop/control.h"

#include "platform/desktop/form.h"
#include "platform/text/letters.h"

namespace platform {

void Control::changed() {
  if (form_.view_) form_.view_->controlChanged(*this);
}

void Control::setText(std::wstring text) {
  text_ = std::move(text);
  changed();
}

void Control::setChecked(bool checked) {
  checked_ = checked;
  changed();
}

void Control::setEnabled(bool enabled) {
  if (std::exchange(enabled_, enabled) != enabled) changed();
}

void Control::setVisible(bool visible) {
  if (std::exchange(visible_, visible) != visible) changed();
}

void Control::setTip(std::wstring tip) {
  tip_ = std::move(tip);
  changed();
}

void Control::setItems(std::vector<std::wstring> items) {
  items_ = std::move(items);
  selected_ = -1;
  changed();
}

void Control::addItem(std::wstring item) {
  items_.push_back(std::move(item));
  changed();
}

void Control::removeItem(int index) {
  if (index < 0 || index >= static_cast<int>(items_.size())) return;
  items_.erase(items_.begin() + index);
  if (selected_ == index) {
    selected_ = -1;
  } else if (selected_ > index) {
    --selected_;
  }
  changed();
}

void Control::select(int index) {
  selected_ = index >= 0 && index < static_cast<int>(items_.size()) ? index : -1;
  changed();
}

int Control::findItem(const std::wstring& text) const {
  const std::wstring wanted = upperCased(text);
  for (size_t i = 0; i < items_.size(); ++i) {
    if (upperCased(items_[i]) == wanted) return static_cast<int>(i);
  }
  return -1;
}

void Control::setColours(std::vector<uint32_t> colours, std::vector<std::wstring> names, int perRow) {
  colours_ = std::move(colours);
  perRow_ = perRow > 0 ? perRow : 1;
  names.resize(colours_.size());
  setItems(std::move(names));
}

}  // namespace platform
