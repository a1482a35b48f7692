#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>

#include "platform/desktop/form.h"
#include "platform/desktop/qt/grid_table.h"

namespace platform {

/// The widget of a control, which its parent owns.
class ControlView {
 public:
  virtual ~ControlView() = default;
  QWidget* widget() const { return widget_; }
  /// Shows what the control says now.
  virtual void update() = 0;
  virtual void selectText() {}

 protected:
  void setWidget(QWidget* widget) { widget_ = widget; }

 private:
  QPointer<QWidget> widget_;
};

std::unique_ptr<ControlView> makeControlView(Form& form, Control& control, const Act& act, QWidget* parent);

}  // namespace platform
