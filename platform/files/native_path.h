#pragma once

#include <string>
#include <string_view>

namespace platform {

/// The path in the form that the operating system takes: `\` and `/` both separate folders. UTF-8.
std::string nativePath(std::wstring_view path);

/// What the system puts between folders.
wchar_t pathSeparator();

/// From the root on, without `.` and `..`; as it is when there is no current folder.
std::string absolutePath(const std::string& path);

/// Splits a native path into its folder ("." when it names none) and the name behind the last
/// separator, which may be empty.
struct SplitPath {
  std::string folder;
  std::string name;
};
SplitPath splitPath(const std::string& path);

}  // namespace platform
