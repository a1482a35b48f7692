#include "platform/desktop/qt/main_window.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QProgressBar>
#include <QProgressDialog>
#include <QStatusBar>
#include <algorithm>
#include <climits>

namespace platform {

namespace {

constexpr int meterWidth = 240;

// A meter without a span would be shown as busy without end.
void setSpan(auto& meter, const Desktop::MainWindow& state) {
  const int first = std::min(state.progressMinimum, INT_MAX - 1);
  const int last = std::max(state.progressMaximum, first + 1);
  meter.setRange(first, last);
  meter.setValue(std::clamp(state.progress, first, last));
}

}  // namespace

MainWindowView::~MainWindowView() { delete alone_; }

void MainWindowView::setWindow(QMainWindow* window) {
  delete label_;
  delete meter_;
  delete alone_;
  window_ = window;
  if (!window) return;
  label_ = new QLabel(window);
  label_->setTextFormat(Qt::PlainText);
  meter_ = new QProgressBar(window);
  meter_->setMaximumWidth(meterWidth);
  window->statusBar()->addPermanentWidget(label_);
  window->statusBar()->addPermanentWidget(meter_);
  label_->hide();
  meter_->hide();
}

QMainWindow* MainWindowView::window() const { return window_; }

void MainWindowView::show(const Desktop::MainWindow& state) {
  window_ ? showInWindow(state) : showAlone(state);
  // The caller is at work and doesn't come back to the loop soon; what a person does meanwhile waits.
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void MainWindowView::showInWindow(const Desktop::MainWindow& state) {
  window_->setWindowTitle(QString::fromStdWString(state.text));
  window_->setEnabled(state.enabled);
  label_->setText(QString::fromStdWString(state.progressLabel));
  setSpan(*meter_, state);
  label_->setVisible(state.meterShown);
  meter_->setVisible(state.meterShown);
}

void MainWindowView::showAlone(const Desktop::MainWindow& state) {
  if (!state.meterShown) {
    delete alone_;
    return;
  }
  if (!alone_) {
    alone_ = new QProgressDialog;
    alone_->setCancelButton(nullptr);
    alone_->setMinimumDuration(0);
    alone_->setAutoReset(false);
    alone_->setAutoClose(false);
  }
  alone_->setWindowTitle(QString::fromStdWString(state.text));
  alone_->setLabelText(QString::fromStdWString(state.progressLabel).toHtmlEscaped());
  setSpan(*alone_, state);
  alone_->show();
}

}  // namespace platform
