#pragma once

#include <string>
#include <string_view>

namespace platform {

/// The path in the form that the operating system takes: `\` and `/` both separate folders. UTF-8.
std::string nativePath(std::wstring_view path);

/// Splits a native path into its folder ("." when it names none) and the name behind the last
/// separator, which may be empty.
struct SplitPath {
  std::string folder;
  std::string name;
};
SplitPath splitPath(const std::string& path);

}  // namespace platform
