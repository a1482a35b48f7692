#include "platform/files/native_path.h"

#include <algorithm>
#include <filesystem>

#include "platform/text/utf.h"

namespace platform {

wchar_t pathSeparator() { return L'/'; }

std::string nativePath(std::wstring_view path) {
  // A path ends at its first NUL for the operating system, so it does so for every check, too.
  std::string native = toUtf8(path.substr(0, path.find(L'\0')));
  std::replace(native.begin(), native.end(), '\\', '/');
  return native;
}

std::string absolutePath(const std::string& path) {
  std::error_code problem;
  const std::filesystem::path absolute = std::filesystem::absolute(path, problem);
  return problem ? path : absolute.lexically_normal().string();
}

SplitPath splitPath(const std::string& path) {
  const size_t last = path.rfind('/');
  if (last == std::string::npos) return {".", path};
  return {last == 0 ? "/" : path.substr(0, last), path.substr(last + 1)};
}

}  // namespace platform
