#pragma once

#include "platform/desktop/desktop.h"
#include "platform/desktop/qt/main_window.h"

namespace platform {

/// Boxes and choosers in windows. Each is owned by the active window, which is active again afterwards. What
/// the caller gives as text is shown as it is, never as markup.
class QtDesktop : public Desktop {
 public:
  QtDesktop();

  BoxAnswer messageBox(const Box& box) override;
  void beep(int kind) override;
  std::optional<std::wstring> chooseFile(const FileChoice& choice) override;
  std::optional<std::wstring> chooseFolder(const std::wstring& title, const std::wstring& initial) override;
  int runDialog(Form& form) override;
  bool takeStop() override;
  std::pair<int, int> screenSize() override;
  void mainWindowChanged() override;
  bool showInFolder(const std::wstring& folder, const std::vector<std::wstring>& files) override;
  int sendKeyPress(int virtualKey) override;

  /// The host's main window, whose title, enabled state and status bar follow `mainWindow`.
  void setWindow(QMainWindow* window);

 private:
  MainWindowView view_;
};

}  // namespace platform

/// What the host finds by name in the library: a desktop that the caller owns.
extern "C" platform::Desktop* makeDesktop();
