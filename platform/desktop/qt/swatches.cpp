#include "platform/desktop/qt/swatches.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>
#include <QToolTip>
#include <algorithm>

#include "platform/desktop/qt/texts.h"

namespace platform {

namespace {
constexpr int smallSide = 16, largeSide = 24, gap = 2;
}

Swatches::Swatches(const Control& control, std::function<void(int)> choose, QWidget* parent)
    : QWidget(parent), control_(control), choose_(std::move(choose)) {
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize Swatches::sizeHint() const {
  const int columns = control_.perRow(), rows = (count() + columns - 1) / columns;
  const int side = count() > 24 ? smallSide : largeSide;
  return {columns * (side + gap) + gap, rows * (side + gap) + gap};
}

QRect Swatches::place(int index) const {
  const int side = count() > 24 ? smallSide : largeSide;
  return {gap + index % control_.perRow() * (side + gap), gap + index / control_.perRow() * (side + gap),
          side, side};
}

int Swatches::at(QPoint point) const {
  for (int i = 0; i < count(); ++i) {
    if (place(i).contains(point)) return i;
  }
  return -1;
}

void Swatches::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  for (int i = 0; i < count(); ++i) {
    painter.fillRect(place(i), QColor::fromRgb(control_.colours()[static_cast<size_t>(i)]));
    painter.setPen(QColor(128, 128, 128, 128));
    painter.drawRect(place(i).adjusted(0, 0, -1, -1));
  }
  const int chosen = control_.selected();
  if (chosen < 0) return;
  // Seen on any colour: dark inside light.
  painter.setPen(QPen(palette().color(QPalette::Window), 1));
  painter.drawRect(place(chosen).adjusted(1, 1, -2, -2));
  painter.setPen(
      QPen(hasFocus() ? palette().color(QPalette::Highlight) : palette().color(QPalette::WindowText), 2));
  painter.drawRect(place(chosen).adjusted(-1, -1, 1, 1));
}

void Swatches::mousePressEvent(QMouseEvent* event) {
  const int index = at(event->pos());
  if (index >= 0) choose_(index);
}

void Swatches::keyPressEvent(QKeyEvent* event) {
  const int step = event->key() == Qt::Key_Left    ? -1
                   : event->key() == Qt::Key_Right ? 1
                   : event->key() == Qt::Key_Up    ? -control_.perRow()
                   : event->key() == Qt::Key_Down  ? control_.perRow()
                                                   : 0;
  if (step == 0) return event->ignore();
  const int next = control_.selected() < 0 ? 0 : control_.selected() + step;
  if (next >= 0 && next < count()) choose_(next);
}

bool Swatches::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  const auto* const help = static_cast<QHelpEvent*>(event);
  const int index = at(help->pos());
  if (index >= 0) {
    QToolTip::showText(help->globalPos(), plainTip(control_.items()[static_cast<size_t>(index)]), this,
                       place(index));
  } else {
    QToolTip::hideText();
  }
  return true;
}

}  // namespace platform
