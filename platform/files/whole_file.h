#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <sys/types.h>

namespace platform {

/// A file that appears under its name only when it is complete: it grows beside the target under a
/// hidden name, and `commit` brings it to the disk and renames it. Without `commit`, nothing is left; what
/// processes that were killed have left in the folder goes when the next file begins to grow there.
class WholeFile {
 public:
  /// UTF-8. A target that is a link is written through.
  explicit WholeFile(const std::string& target);
  ~WholeFile();
  WholeFile(const WholeFile&) = delete;
  WholeFile& operator=(const WholeFile&) = delete;

  /// False after any failure; then `write` and `commit` do nothing and answer false.
  bool good() const { return descriptor_ >= 0; }
  int descriptor() const { return descriptor_; }
  const std::string& temporaryName() const { return temporary_; }
  bool write(std::string_view bytes);
  /// Permission bits of the finished file; without it, those of the file that is replaced, or the
  /// usual ones of a new file.
  void setMode(mode_t mode) { mode_ = mode; }
  bool commit();

 private:
  void abandon();

  std::string target_;
  std::string temporary_;
  int descriptor_ = -1;
  mode_t mode_;
};

/// All bytes of a file; nothing when it can't be read to its end, or is a folder.
std::optional<std::string> readWhole(const std::string& path);

/// Brings the names in a folder to the disk.
void syncFolder(const std::string& folder);

}  // namespace platform
