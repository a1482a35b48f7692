#pragma once

#include <string>

/// Full path of the one file of a folder whose name ends in `name`, perhaps with more behind it, and that has
/// the extension. The master and standards files that are shipped don't count. Empty when there is none, or
/// more than one: an ambiguous folder is no answer.
std::wstring findUniqueFile(const std::wstring& folder, const std::wstring& name,
                            const std::wstring& extension);

/// The one project database of a folder: by the extension "kv", and when that gives none, by "mdb".
std::wstring findProjectFile(const std::wstring& folder, const std::wstring& name);
