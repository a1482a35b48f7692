#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace platform {

/// Why the system refuses something with a file.
enum class FileProblem { none, notFound, exists, noRight, diskFull, disk, badPath };

/// Of the calling thread's last call of this room that failed.
FileProblem lastFileProblem();
/// Of a number of the system's, as `std::error_code` holds it.
FileProblem fileProblemOf(int systemError);

/// Which file it is, under whatever name; zeroes for none.
using FileIdentity = std::pair<uint64_t, uint64_t>;

struct FileFacts {
  enum class Kind { plain, folder, other };
  Kind kind = Kind::other;
  int64_t size = 0;
  FileIdentity identity;
  int64_t modified = 0;  ///< nanoseconds of the system's clock
  bool operator==(const FileFacts&) const = default;
};

/// What the file's attributes tell of the one that a link leads to; it isn't opened. The path is native.
std::optional<FileFacts> factsOf(const std::string& path);

enum class FileUse { read, readAndWrite };
bool mayUse(const std::string& path, FileUse use);

/// Whether the file lies on another machine, or where that can't be told.
bool isOnNetwork(const std::string& path);

}  // namespace platform
