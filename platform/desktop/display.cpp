#include "platform/desktop/display.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <thread>

namespace platform {

namespace {

using MakeDesktop = Desktop* (*)();

constexpr const char* libraryName = "libzarbo_desktop_qt.so";
constexpr std::chrono::seconds patience{10};

// Beside the library that this function is in.
std::filesystem::path libraryFile() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<const void*>(&libraryFile), &info) == 0 || !info.dli_fname) return libraryName;
  return std::filesystem::path(info.dli_fname).parent_path() / libraryName;
}

/// Null, with the reason, when the library isn't there. It is never unloaded.
MakeDesktop loadMaker(std::string& reason) {
  void* const library = dlopen(libraryFile().c_str(), RTLD_NOW | RTLD_LOCAL);
  const auto maker = library ? reinterpret_cast<MakeDesktop>(dlsym(library, "makeDesktop")) : nullptr;
  if (!maker) reason = dlerror();
  return maker;
}

[[noreturn]] void tryInChild() {
  const rlimit noDump{0, 0};
  setrlimit(RLIMIT_CORE, &noDump);
  const int nowhere = open("/dev/null", O_RDWR);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nowhere, stream);
  std::string ignored;
  const MakeDesktop maker = loadMaker(ignored);
  _exit(maker && maker() ? 0 : 1);
}

bool endsWell(pid_t child) {
  const auto end = std::chrono::steady_clock::now() + patience;
  int status = 0;
  while (waitpid(child, &status, WNOHANG) == 0) {
    if (std::chrono::steady_clock::now() > end) {
      kill(child, SIGKILL);
      waitpid(child, nullptr, 0);
      return false;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// The toolkit ends the process when the display can't be reached, so a child tries first.
bool canBeReached() {
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child == 0) tryInChild();
  return child > 0 && endsWell(child);
}

std::unique_ptr<Desktop> openDisplay(std::string& reason) {
  reason = "the display can't be reached";
  if (!canBeReached()) return nullptr;
  const MakeDesktop maker = loadMaker(reason);
  return std::unique_ptr<Desktop>(maker ? maker() : nullptr);
}

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

void DisplayDesktop::mainWindowChanged() { present().setMainWindow(mainWindow()); }

bool DisplayDesktop::showInFolder(const std::wstring& folder, const std::vector<std::wstring>& files) {
  return shown().showInFolder(folder, files);
}

int DisplayDesktop::sendKeyPress(int virtualKey) { return present().sendKeyPress(virtualKey); }

}  // namespace platform
