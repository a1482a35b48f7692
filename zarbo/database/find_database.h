#pragma once

#include <string>

/// Looks for the file as given and then in each folder of the host variable "ACADPREFIX"; on a hit
/// there, `path` becomes the full path. False when it is found nowhere.
bool findDatabase(std::wstring& path);
