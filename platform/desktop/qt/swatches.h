#pragma once

#include <QWidget>
#include <functional>

#include "platform/desktop/control.h"

namespace platform {

/// A field of colours, one of which can be chosen by mouse or arrows.
class Swatches : public QWidget {
 public:
  Swatches(const Control& control, std::function<void(int)> choose, QWidget* parent);
  QSize sizeHint() const override;
  QRect place(int index) const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool event(QEvent* event) override;

 private:
  int count() const { return static_cast<int>(control_.colours().size()); }
  int at(QPoint point) const;

  const Control& control_;
  std::function<void(int)> choose_;
};

}  // namespace platform
