#include "platform/desktop/display.h"

#include <cstdio>
#include <cstdlib>

#include "platform/desktop/toolkit.h"

namespace platform {

namespace {

bool isSet(const char* variable) {
  const char* const value = std::getenv(variable);
  return value && *value;
}

}  // namespace

bool hasDisplay() { return isSet("DISPLAY") || isSet("WAYLAND_DISPLAY"); }

Desktop& DisplayDesktop::shown() {
  if (!tried_) {
    tried_ = true;
    std::string reason;
    display_ = openDisplay(reason);
    if (display_) {
      display_->setMainWindow(mainWindow());
    } else {
      std::fprintf(stderr, "%s; asking at the terminal\n", reason.c_str());
    }
  }
  return present();
}

BoxAnswer DisplayDesktop::messageBox(const Box& box) { return shown().messageBox(box); }

void DisplayDesktop::beep(int kind) { present().beep(kind); }

std::optional<std::wstring> DisplayDesktop::chooseFile(const FileChoice& choice) {
  return shown().chooseFile(choice);
}

std::optional<std::wstring> DisplayDesktop::chooseFolder(const std::wstring& title,
                                                         const std::wstring& initial) {
  return shown().chooseFolder(title, initial);
}

std::pair<int, int> DisplayDesktop::screenSize() { return shown().screenSize(); }

int DisplayDesktop::runDialog(Form& form) { return shown().runDialog(form); }

void DisplayDesktop::mainWindowChanged() { present().setMainWindow(mainWindow()); }

bool DisplayDesktop::showInFolder(const std::wstring& folder, const std::vector<std::wstring>& files) {
  return shown().showInFolder(folder, files);
}

int DisplayDesktop::sendKeyPress(int virtualKey) { return present().sendKeyPress(virtualKey); }

}  // namespace platform
