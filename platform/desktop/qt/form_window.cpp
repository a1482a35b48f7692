#include "platform/desktop/qt/form_window.h"

#include <QApplication>
#include <QBoxLayout>
#include <QCloseEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <algorithm>

#include "platform/desktop/desktop.h"
#include "platform/desktop/form_person.h"
#include "platform/desktop/qt/texts.h"
#include "platform/desktop/qt/window_place.h"

namespace platform {

namespace {

/// How often timers of the program are looked at while a dialog waits, in milliseconds.
constexpr int timerRound = 50;

}  // namespace

FormWindow::FormWindow(Form& form, QWidget* owner) : QDialog(owner), form_(form) {
  setWindowTitle(shownText(form.title()));
  setModal(true);
  setSizeGripEnabled(false);
  for (Control& each : form.controls()) {
    auto view = makeControlView(
        form, each, [this](const auto& deed) { return act(deed); }, this);
    view->widget()->setEnabled(each.isEnabled());
    view->widget()->setVisible(each.isVisible());
    views_[each.number()] = std::move(view);
  }
  QLayout* const layout = lay(form.layout());
  setLayout(layout);
  // Where nothing grows, the room of a larger window lies above the last row, where the buttons are.
  auto* const box = qobject_cast<QBoxLayout*>(layout);
  if (box && growth(form.layout()) == 0) box->insertStretch(box->count() - 1, 1);
  orderTabs();
  form.setView(this);
  connect(qApp, &QApplication::focusChanged, this,
          [this](QWidget* former, QWidget* now) { onFocus(former, now); });
}

FormWindow::~FormWindow() {
  form_.setView(nullptr);
  disconnect(qApp, nullptr, this, nullptr);
}

// Layout

int FormWindow::growth(const Layout& layout) const {
  switch (layout.kind) {
    case Layout::Kind::control:
      return form_.has(layout.control) ? form_.control(layout.control).grow() : 0;
    case Layout::Kind::space:
      return 1;
    default: {
      int most = 0;
      for (const Layout& each : layout.parts) {
        if (each.kind != Layout::Kind::space) most = std::max(most, growth(each));
      }
      return most;
    }
  }
}

void FormWindow::layInto(QBoxLayout& box, const Layout& part, bool across) {
  // A space in a row pushes sideways only, and gives way to what grows.
  if (part.kind == Layout::Kind::space) return box.addStretch(1);
  const int share = growth(part);
  if (part.kind != Layout::Kind::control) {
    box.addLayout(lay(part), share);
  } else if (QWidget* const widget = widgetOf(part.control)) {
    const bool isEdit = form_.control(part.control).kind() == ControlKind::edit;
    order_.push_back(part.control);
    box.addWidget(widget, across && isEdit ? std::max(share, 1) : share);
  }
}

void FormWindow::layFields(const Layout& layout, QGridLayout& grid) {
  for (const Layout& each : layout.parts) {
    const int row = grid.rowCount();
    QWidget* const widget = each.kind == Layout::Kind::control ? widgetOf(each.control) : nullptr;
    if (!widget) {
      grid.addLayout(lay(each), row, 0, 1, 2);
      continue;
    }
    order_.push_back(each.control);
    const int share = growth(each);
    grid.setRowStretch(row, share);
    if (each.label.empty()) {
      grid.addWidget(widget, row, 0, 1, 2);
      continue;
    }
    auto* const label = new QLabel(shownText(each.label), this);
    label->setBuddy(widget);
    grid.addWidget(label, row, 0, share > 0 ? Qt::AlignTop : Qt::AlignVCenter);
    grid.addWidget(widget, row, 1);
  }
  grid.setColumnStretch(1, 1);
}

QLayout* FormWindow::lay(const Layout& layout) {
  if (layout.kind == Layout::Kind::fields) {
    auto* const grid = new QGridLayout;
    layFields(layout, *grid);
    return grid;
  }
  const bool across = layout.kind == Layout::Kind::row;
  auto* const box = new QBoxLayout(across ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
  if (layout.parts.empty()) {
    layInto(*box, layout, across);
  } else {
    for (const Layout& each : layout.parts) layInto(*box, each, across);
  }
  return box;
}

void FormWindow::orderTabs() {
  for (size_t i = 1; i < order_.size(); ++i) setTabOrder(widgetOf(order_[i - 1]), widgetOf(order_[i]));
}

void FormWindow::giveSize() {
  QSize wanted = sizeHint();
  for (const Control& each : form_.controls()) {
    if (each.grow() == 0 || each.letters() == 0) continue;
    const QFontMetrics letters = widgetOf(each.number())->fontMetrics();
    const QSize own = widgetOf(each.number())->sizeHint();
    const QSize asked(each.letters() * letters.averageCharWidth(),
                      each.lines() * (letters.lineSpacing() + 6));
    wanted += QSize(std::max(asked.width() - own.width(), 0), std::max(asked.height() - own.height(), 0));
  }
  const QRect screen = this->screen()->availableGeometry();
  resize(wanted.boundedTo(screen.size() * 9 / 10));
  if (const auto kept = keptPlace(form_.name())) setGeometry(*kept);
  layout()->activate();
}

void FormWindow::keepSize() const {
  if (isVisible() && geometry() != startPlace_) keepPlace(form_.name(), geometry());
}

// Life

void FormWindow::start() {
  ensurePolished();
  giveSize();
  form_.open();
  act([this] {
    if (form_.onStart) form_.onStart();
    return true;
  });
  refresh();
  if (form_.isClosed()) return;
  show();
  startPlace_ = geometry();
  if (form_.focus() == 0 && !order_.empty()) focusNextChild();
  focusChanged();
}

void FormWindow::showStill() {
  ensurePolished();
  giveSize();
  refresh();
  show();
  focusChanged();
}

int FormWindow::run() {
  start();
  QTimer timers;
  connect(&timers, &QTimer::timeout, this, [this] {
    act([] {
      desktop().runTimers();
      return false;
    });
  });
  timers.start(timerRound);
  if (!form_.isClosed()) loop_.exec();
  rethrow();
  return form_.result();
}

void FormWindow::rethrow() {
  if (thrown_) std::rethrow_exception(std::exchange(thrown_, nullptr));
}

bool FormWindow::act(const std::function<bool()>& deed) {
  try {
    const bool done = deed();
    acted_ = acted_ || done;
    return done;
  } catch (...) {
    if (!thrown_) thrown_ = std::current_exception();
    form_.close(cancelButton);
    return false;
  }
}

QWidget* FormWindow::widgetOf(int number) const {
  const auto view = views_.find(number);
  return view == views_.end() ? nullptr : view->second->widget();
}

GridTable* FormWindow::tableOf(int number) const { return dynamic_cast<GridTable*>(widgetOf(number)); }

void FormWindow::refresh() {
  for (const auto& [number, view] : views_) {
    if (GridTable* const table = tableOf(number)) table->refreshNow();
  }
}

// What the program changed

void FormWindow::controlChanged(Control& control) {
  const auto& view = views_.at(control.number());
  view->update();
  view->widget()->setEnabled(control.isEnabled());
  view->widget()->setVisible(control.isVisible());
  view->widget()->setToolTip(plainTip(control.tip()));
}

void FormWindow::titleChanged() { setWindowTitle(shownText(form_.title())); }

void FormWindow::focusChanged() {
  QWidget* const widget = widgetOf(form_.focus());
  if (!widget) return;
  widget->setFocus(Qt::OtherFocusReason);
  if (form_.control(form_.focus()).kind() == ControlKind::edit) views_.at(form_.focus())->selectText();
}

void FormWindow::textSelected(Control& control) { views_.at(control.number())->selectText(); }

void FormWindow::closed() {
  keepSize();
  hide();
  loop_.quit();
}

void FormWindow::drawNow() {
  refresh();
  repaint();
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

// Keys, and where the focus goes

void FormWindow::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: {
      auto* const button = qobject_cast<QPushButton*>(focusWidget());
      const int number = button ? button->objectName().toInt() : form_.defaultButton();
      act([&] { return FormPerson(form_).press(number); });
      return;
    }
    case Qt::Key_Escape:
      act([this] { return FormPerson(form_).cancel(), true; });
      return;
    default:
      QDialog::keyPressEvent(event);
  }
}

void FormWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  act([this] { return FormPerson(form_).cancel(), true; });
}

// An open cell ends when the focus goes elsewhere in the window. Other windows, such as lists, don't end it.
void FormWindow::onFocus(QWidget*, QWidget* now) {
  if (!now || !isAncestorOf(now) || form_.isClosed()) return;
  for (const auto& [number, view] : views_) {
    const GridTable* const table = tableOf(number);
    if (!table || !table->editor() || now == table->editor() || table->editor()->isAncestorOf(now)) continue;
    const bool toCancel = now == widgetOf(cancelButton);
    act([&] {
      FormPerson person(form_);
      toCancel ? person.abandonOpenCells() : person.commitOpenCells();
      return true;
    });
  }
  for (QWidget* each = now; each && each != this; each = each->parentWidget()) {
    const int number = each->objectName().toInt();
    if (number != 0 && widgetOf(number) == each) {
      act([&] { return FormPerson(form_).focusOn(number), false; });
      return;
    }
  }
}

}  // namespace platform
