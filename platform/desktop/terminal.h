#pragma once

#include "platform/desktop/desktop.h"

namespace platform {

/// Asks at the terminal's prompt. The end of input cancels. Progress is shown on standard error, in one line.
class TerminalDesktop : public Desktop {
 public:
  BoxAnswer messageBox(const Box& box) override;
  void beep(int kind) override;
  std::optional<std::wstring> chooseFile(const FileChoice& choice) override;
  std::optional<std::wstring> chooseFolder(const std::wstring& title, const std::wstring& initial) override;
  std::pair<int, int> screenSize() override;
  void mainWindowChanged() override;

 private:
  std::wstring progress_;
};

}  // namespace platform
