#pragma once

#include "platform/desktop/desktop.h"

namespace platform {

/// Cancels a dialog for want of a window, and says so on standard error.
int cancelForWantOfWindow(Form& form);

/// Asks at the terminal's prompt, all but dialogs, which need a window. The end of input cancels. Progress is
/// shown on standard error, in one line.
class TerminalDesktop : public Desktop {
 public:
  BoxAnswer messageBox(const Box& box) override;
  void beep(int kind) override;
  std::optional<std::wstring> chooseFile(const FileChoice& choice) override;
  std::optional<std::wstring> chooseFolder(const std::wstring& title, const std::wstring& initial) override;
  int runDialog(Form& form) override;
  std::pair<int, int> screenSize() override;
  void mainWindowChanged() override;

 private:
  std::wstring progress_;
};

}  // namespace platform
