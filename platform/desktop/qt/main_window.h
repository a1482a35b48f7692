#pragma once

#include <QPointer>

#include "platform/desktop/desktop.h"

class QLabel;
class QMainWindow;
class QProgressBar;
class QProgressDialog;

namespace platform {

/// Shows the state of the host's main window: in its window, or, where it has none, the progress in a small
/// window of its own.
class MainWindowView {
 public:
  ~MainWindowView();
  /// The window is its owner's; null, or the window's end, takes it away.
  void setWindow(QMainWindow* window);
  void show(const Desktop::MainWindow& state);
  QMainWindow* window() const;

 private:
  void showInWindow(const Desktop::MainWindow& state);
  void showAlone(const Desktop::MainWindow& state);

  QPointer<QMainWindow> window_;
  QPointer<QLabel> label_;
  QPointer<QProgressBar> meter_;
  QPointer<QProgressDialog> alone_;
};

}  // namespace platform
