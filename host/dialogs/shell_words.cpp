#include "host/dialogs/shell_words.h"

#include <algorithm>
#include <string_view>

#include "platform/desktop/desktop.h"
#include "platform/files/files.h"
#include "platform/text/letters.h"

namespace host {
namespace {

/// Results of opening above this are success.
constexpr int highestOpenFailure = 32;

std::wstring trimmed(const std::wstring& text) {
  const size_t first = text.find_first_not_of(L" \t\"");
  if (first == std::wstring::npos) return {};
  return text.substr(first, text.find_last_not_of(L" \t\"") + 1 - first);
}

/// Takes the word off the front, whatever its case.
bool takeFront(std::wstring& text, std::wstring_view word) {
  if (upperCased(text.substr(0, word.size())) != word) return false;
  text = trimmed(text.substr(word.size()));
  return true;
}

bool showFile(const std::wstring& path) {
  if (!platform::fileExists(path) && !platform::folderExists(path)) return false;
  const size_t last = path.find_last_of(L"\\/");
  const std::wstring folder = last == std::wstring::npos ? L"." : path.substr(0, std::max<size_t>(last, 1));
  return platform::desktop().showInFolder(folder, {path});
}

}  // namespace

bool startByWords(const std::wstring& command, const std::wstring& file) {
  std::wstring rest = trimmed(file.empty() ? command : command + L" " + file);
  if (takeFront(rest, L"EXPLORER.EXE") || takeFront(rest, L"EXPLORER ")) {
    if (takeFront(rest, L"/SELECT,")) return showFile(rest);
  }
  return !rest.empty() && platform::desktop().openDocument(L"open", rest) > highestOpenFailure;
}

}  // namespace host
