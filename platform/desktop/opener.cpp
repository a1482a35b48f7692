#include "platform/desktop/opener.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <vector>

#include "platform/desktop/desktop.h"
#include "platform/files/native_path.h"
#include "platform/text/utf.h"

extern char** environ;

namespace platform {

namespace {

// Letters, at least two so that a drive is none, then a colon.
bool isAddress(const std::string& text) {
  const size_t colon = text.find(':');
  return colon != std::string::npos && colon >= 2 &&
         std::all_of(text.begin(), text.begin() + static_cast<ptrdiff_t>(colon),
                     [](char c) {
                       return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                              c == '+' || c == '-' || c == '.';
                     }) &&
         text.front() != '-';
}

// Openers that have ended leave an entry in the process table until someone asks for it.
void forgetEnded(std::vector<pid_t>& openers) {
  std::erase_if(openers, [](pid_t opener) { return waitpid(opener, nullptr, WNOHANG) != 0; });
}

bool start(std::vector<std::string> words) {
  static std::vector<pid_t> openers;
  forgetEnded(openers);
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  pid_t child;
  if (posix_spawnp(&child, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0) return false;
  openers.push_back(child);
  return true;
}

}  // namespace

int openByDesktop(const std::wstring& target) {
  std::string word = toUtf8(target);
  if (word.empty()) return fileNotFound;
  if (!isAddress(word)) {
    word = nativePath(target);
    if (access(word.c_str(), F_OK) != 0) return fileNotFound;
    if (word.front() == '-') word.insert(0, "./");  // not an option of the opener
  }
  return start({"xdg-open", word}) || start({"gio", "open", word}) ? opened : noAssociation;
}

}  // namespace platform
