#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

class HiddenFile;

/// Where a file that is made under this name goes: a link is written through. Nothing, with `errno` told,
/// when something stands there that must not be replaced: a read-only file, a folder, a device, a pipe, or a
/// link that leads nowhere.
std::optional<std::string> replaceableFile(const std::string& path);

/// A file that appears under its name only when it is complete: it grows in the target's folder without a
/// name (where the file system can't do that, under a hidden one), and `commit` brings it to the disk and
/// names it. Without `commit`, nothing is left, also when the process is killed; a hidden name that was left
/// goes when the next file begins to grow in the folder.
class WholeFile {
 public:
  /// UTF-8. The target must be a `replaceableFile`.
  explicit WholeFile(const std::string& target);
  ~WholeFile();
  WholeFile(const WholeFile&) = delete;
  WholeFile& operator=(const WholeFile&) = delete;

  /// False after any failure; then `write` and `commit` do nothing and answer false.
  bool good() const;
  bool write(std::string_view bytes);
  /// The permissions and times of an open file, instead of those of the file that is replaced or of a new
  /// one.
  bool takeAttributesOf(int descriptor);
  bool commit();

 private:
  std::string target_;
  std::unique_ptr<HiddenFile> file_;
  unsigned mode_ = 0;
};

/// All bytes of a plain file; nothing when it can't be read to its end.
std::optional<std::string> readWhole(const std::string& path);

/// Opens a plain file for reading, its descriptor the caller's; -1 otherwise. A pipe, on which opening would
/// wait for a writer, is refused at once.
int openPlainFile(const std::string& path);

/// Brings the names in a folder to the disk.
void syncFolder(const std::string& folder);

}  // namespace platform
