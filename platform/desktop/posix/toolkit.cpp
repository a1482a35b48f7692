#include "platform/desktop/toolkit.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <thread>
#include <vector>

#include "platform/library/library.h"
#include "platform/text/utf.h"

namespace platform {

namespace {

constexpr const char* libraryName = "libzarbo_desktop_qt.so";
constexpr std::chrono::seconds patience{10};

std::filesystem::path besideThisLibrary(const char* library) {
  const std::filesystem::path own = fileOfCode(reinterpret_cast<const void*>(&besideThisLibrary));
  return own.empty() ? library : own.parent_path() / library;
}

/// A function of the library that makes something for its caller; null, with the reason, when it isn't there.
template <class Made>
auto loadMaker(const char* name, std::string& reason) {
  return reinterpret_cast<Made* (*)()>(functionOfLibrary(libraryName, name, reason));
}

[[noreturn]] void tryInChild() {
  const rlimit noDump{0, 0};
  setrlimit(RLIMIT_CORE, &noDump);
  const int nowhere = open("/dev/null", O_RDWR);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nowhere, stream);
  std::string ignored;
  const auto maker = loadMaker<Desktop>("makeDesktop", ignored);
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

/// Lives to the end of the process. Unless the toolkit runs already, it draws off screen, so that nobody's
/// display is needed or disturbed.
FormStage* stage(std::string& reason) {
  static FormStage* made = nullptr;
  if (made) return made;
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  const auto maker = loadMaker<FormStage>("makeFormStage", reason);
  return made = maker ? maker() : nullptr;
}

}  // namespace

void* functionOfLibrary(const char* library, const char* name, std::string& reason) {
  // To the end of the process: what is loaded here never tells when it is done.
  static std::vector<std::unique_ptr<Library>>& kept = *new std::vector<std::unique_ptr<Library>>;
  std::unique_ptr<Library> loaded = Library::open(besideThisLibrary(library).string(), reason);
  if (!loaded) return nullptr;
  void* const function = loaded->find(name);
  if (!function) reason = std::string("there is no ") + name;
  kept.push_back(std::move(loaded));
  return function;
}

bool displayCanBeReached() {
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child == 0) tryInChild();
  return child > 0 && endsWell(child);
}

std::unique_ptr<Desktop> openDisplay(std::string& reason) {
  reason = "the display can't be reached";
  if (!displayCanBeReached()) return nullptr;
  const auto maker = loadMaker<Desktop>("makeDesktop", reason);
  return std::unique_ptr<Desktop>(maker ? maker() : nullptr);
}

int playOnWidgets(Form& form, const FormScript& script, ScriptList& log) {
  std::string reason;
  FormStage* const widgets = stage(reason);
  if (widgets) return widgets->play(form, script, log);
  log.emplace_back(form.title() + L": " + fromUtf8(reason));
  return dialogFailed;
}

std::wstring drawWithWidgets(Form& form, const std::wstring& file, int width, int height, bool dark) {
  std::string reason;
  FormStage* const widgets = stage(reason);
  return widgets ? widgets->draw(form, file, width, height, dark) : fromUtf8(reason);
}

}  // namespace platform
