#pragma once

#include <string>

namespace platform {

/// A file of this process's own beside a target, under a hidden name that nobody else has, for those who
/// write by its name. Removed at the end, unless it took the target's name.
class GrowingFile {
 public:
  /// UTF-8. Makes it, empty. What killed processes left in the folder is taken away first; the files of those
  /// that live are locked.
  explicit GrowingFile(const std::string& target);
  ~GrowingFile();
  GrowingFile(const GrowingFile&) = delete;
  GrowingFile& operator=(const GrowingFile&) = delete;

  const std::string& path() const { return path_; }
  /// The system's number for what failed, 0 while all is well.
  int error() const { return error_; }
  /// Brings the content to the disk and gives it the target's name; false with `error` EEXIST when there is
  /// such a file.
  bool appear();

 private:
  bool failed();

  std::string target_, path_;
  int descriptor_ = -1;
  int error_ = 0;
};

}  // namespace platform
