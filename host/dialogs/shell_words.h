#pragma once

#include <string>

namespace host {

/// Starts what `startapp` is given: "explorer.exe /select,PATH" shows the file in its folder, and any other
/// document, folder or address is opened by the desktop, "explorer.exe" before it or not. Programs aren't
/// run. False on failure.
bool startByWords(const std::wstring& command, const std::wstring& file);

}  // namespace host
