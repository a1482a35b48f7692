#include "platform/desktop/opener.h"

#include <algorithm>

#include "platform/desktop/desktop.h"
#include "platform/files/file_facts.h"
#include "platform/files/native_path.h"
#include "platform/process/programs.h"
#include "platform/text/utf.h"

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

}  // namespace

int openByDesktop(const std::wstring& target) {
  std::string word = toUtf8(target);
  if (word.empty()) return fileNotFound;
  if (!isAddress(word)) {
    word = nativePath(target);
    if (!factsOf(word)) return fileNotFound;
    if (word.front() == '-') word.insert(0, "./");  // not an option of the opener
  }
  return startProgram({"xdg-open", word}) || startProgram({"gio", "open", word}) ? opened : noAssociation;
}

}  // namespace platform
