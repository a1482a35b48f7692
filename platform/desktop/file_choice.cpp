#include "platform/desktop/file_choice.h"

#include <algorithm>

#include "platform/files/files.h"

namespace platform {

namespace {

bool isSeparator(wchar_t c) { return c == L'/' || c == L'\\'; }

bool isFullPath(const std::wstring& path) {
  return isSeparator(path.front()) || (path.size() > 1 && path[1] == L':');
}

bool hasExtension(const std::wstring& path) {
  const auto name = std::find_if(path.rbegin(), path.rend(), isSeparator).base();
  return std::find(name, path.end(), L'.') != path.end();
}

}  // namespace

std::wstring finishedChoice(const FileChoice& choice, const std::wstring& typed) {
  if (typed.empty()) return typed;
  std::wstring path = typed;
  if (!isFullPath(typed) && !choice.folder.empty())
    path = choice.folder + (isSeparator(choice.folder.back()) ? L"" : L"/") + typed;
  if (!choice.defaultExtension.empty() && !hasExtension(path) && !fileExists(path))
    path += L"." + choice.defaultExtension;
  return path;
}

}  // namespace platform
