#pragma once

#include <string>

/// The part before the last `\`, or, where there is none, before the last `/`; "" without either.
std::wstring folderOfPath(const std::wstring& path);
/// The part behind it; "" without either.
std::wstring fileOfPath(const std::wstring& path);

/// The current document's file name without its folder; "" when no document is open.
std::wstring currentDrawingName();

/// The folder for temporary files of the system's own, with a closing separator; it is made when it
/// is missing. Two separators stand between the machine's folder and its name, as callers expect.
bool getPrivateTempFolder(std::wstring& folder);
