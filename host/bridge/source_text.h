#pragma once

#include <string>

namespace host {

/// The text of a source file, as UTF-8. Bytes that aren't UTF-8 are read in the code page that the first line
/// names ("; coding: windows-1250"), or else in the current drawing's (DWGCODEPAGE), which is told, since it
/// may be another one than the file's.
std::string sourceAsUtf8(std::string bytes, const std::wstring& fileName);

}  // namespace host
