#include "zarbo/database/find_database.h"

#include <filesystem>
#include <string_view>

#include "brx/lisp_calls.h"
#include "platform/files/native_path.h"

namespace {

bool exists(const std::wstring& path) {
  std::error_code problem;
  return std::filesystem::exists(platform::nativePath(path), problem);
}

std::wstring searchPath() {
  resbuf value{};
  if (acedGetVar(L"ACADPREFIX", &value) != RTNORM || value.restype != RTSTR) return {};
  std::wstring folders = value.resval.rstring ? value.resval.rstring : L"";
  acutDelString(value.resval.rstring);
  return folders;
}

}  // namespace

bool findDatabase(std::wstring& path) {
  if (exists(path)) return true;
  const std::wstring folders = searchPath();
  for (std::wstring_view left = folders; !left.empty();) {
    const size_t end = std::min(left.find(L';'), left.size());
    std::wstring candidate(left.substr(0, end));
    left.remove_prefix(std::min(end + 1, left.size()));
    if (candidate.empty()) continue;
    if (candidate.back() != platform::pathSeparator()) candidate += platform::pathSeparator();
    candidate += path;
    if (exists(candidate)) {
      path = std::move(candidate);
      return true;
    }
  }
  return false;
}
