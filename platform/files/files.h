#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// File operations by the rules of the host's platform. Paths may come with `\` or `/`. A boolean
/// answer is false on any failure.

/// Replaces the target, but not a read-only one. The copy has the source's contents, permissions and
/// modification time; a failed copy leaves the target as it was.
bool copyFile(const std::wstring& source, const std::wstring& target);
/// A file or a folder, within one file system or a file between two; never over an existing target.
bool moveFile(const std::wstring& source, const std::wstring& target);
/// Neither a folder nor a read-only file.
bool deleteFile(const std::wstring& path);
/// The parent must exist.
bool makeFolder(const std::wstring& path);
/// Only an empty one.
bool removeFolder(const std::wstring& path);
bool folderExists(const std::wstring& path);
bool fileExists(const std::wstring& path);

/// Names in the folder of the pattern that match its last part, by `matchesPattern`, in the order of
/// their capital letters; "." and ".." too when they match.
std::vector<std::wstring> findFiles(const std::wstring& pattern);

/// Whether a name matches a pattern without regard to case. `*` stands for any characters, `?` for
/// one, or for none before a "." and at the end. "*.*" matches all names, and a closing "." behind a
/// `*` names without a ".". A "." before a wildcard also matches the end of the name.
bool matchesPattern(const std::wstring& name, const std::wstring& pattern);

/// Of a readable file; nothing otherwise.
std::optional<std::chrono::system_clock::time_point> modificationTime(const std::wstring& path);

/// No one may write it, by its permissions. A path that isn't there counts as read-only.
bool isReadOnly(const std::wstring& path);

/// With its closing separator. Empty when there is none.
std::wstring temporaryFolder();

enum class UserFolder { home, desktop, documents, pictures, settings, data, cache, state };
/// Without a closing separator; empty when it can't be told.
std::wstring userFolder(UserFolder folder);

}  // namespace platform
