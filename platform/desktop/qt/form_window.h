#pragma once

#include <QDialog>
#include <QEventLoop>
#include <exception>
#include <functional>
#include <map>
#include <memory>

#include "platform/desktop/form.h"
#include "platform/desktop/qt/control_view.h"

class QBoxLayout;
class QGridLayout;
class QLayout;

namespace platform {

/// A form in a window. Its size and place are kept in the settings under the form's name, when a person has
/// changed them.
class FormWindow : public QDialog, public FormView {
 public:
  /// The form must live longer.
  FormWindow(Form& form, QWidget* owner);
  ~FormWindow() override;

  /// Lets the form begin, then shows the window.
  void start();
  /// Shows it as it stands, without a beginning.
  void showStill();
  /// Shows it until the form is closed. What a handler threw is thrown here.
  int run();
  void rethrow();

  /// Does what a person does. What a handler throws is kept, and closes the form, as nothing may be thrown
  /// through the toolkit.
  bool act(const std::function<bool()>& deed);
  /// Whether anything was done since the last call.
  bool takeActed() { return std::exchange(acted_, false); }

  Form& form() const { return form_; }
  /// Null when there is no such control.
  QWidget* widgetOf(int number) const;
  GridTable* tableOf(int number) const;
  /// Shows what the program changed in grids at once.
  void refresh();

  void controlChanged(Control& control) override;
  void titleChanged() override;
  void focusChanged() override;
  void textSelected(Control& control) override;
  void closed() override;
  void drawNow() override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  QLayout* lay(const Layout& layout);
  void layFields(const Layout& layout, QGridLayout& grid);
  void layInto(QBoxLayout& box, const Layout& part, bool across);
  int growth(const Layout& layout) const;
  void giveSize();
  void keepSize() const;
  void orderTabs();
  void onFocus(QWidget* former, QWidget* now);

  Form& form_;
  std::map<int, std::unique_ptr<ControlView>> views_;
  std::vector<int> order_;
  QEventLoop loop_;
  std::exception_ptr thrown_;
  bool acted_ = false;
  QRect startPlace_;
};

}  // namespace platform
