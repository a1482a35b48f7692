#pragma once

#include "platform/desktop/desktop.h"

namespace platform {

/// Whether the environment names a display.
bool hasDisplay();

/// The desktop of the display. Its library, which takes its time to start, is loaded when something is first
/// to be shown; where that fails, the one beneath is asked for good, and standard error tells why.
class DisplayDesktop : public Desktop {
 public:
  explicit DisplayDesktop(std::unique_ptr<Desktop> beneath) : beneath_(std::move(beneath)) {}

  BoxAnswer messageBox(const Box& box) override;
  void beep(int kind) override;
  std::optional<std::wstring> chooseFile(const FileChoice& choice) override;
  std::optional<std::wstring> chooseFolder(const std::wstring& title, const std::wstring& initial) override;
  int runDialog(Form& form) override;
  bool takeStop() override { return present().takeStop(); }
  std::pair<int, int> screenSize() override;
  void mainWindowChanged() override;
  bool showInFolder(const std::wstring& folder, const std::vector<std::wstring>& files) override;
  int sendKeyPress(int virtualKey) override;

 private:
  Desktop& shown();
  /// For what is not worth the loading.
  Desktop& present() { return display_ ? *display_ : *beneath_; }

  std::unique_ptr<Desktop> beneath_, display_;
  bool tried_ = false;
};

}  // namespace platform
