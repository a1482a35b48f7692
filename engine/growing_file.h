#pragma once

#include <string>

/// A file of this process's own beside a target, under a hidden name that nobody else has. Removed at the
/// end, unless it took the target's name.
class GrowingFile {
 public:
  /// Makes it, empty. What killed processes left in the folder is taken away first; the files of those that
  /// live are locked. Fails with the number that making the target would have.
  explicit GrowingFile(const std::string& target);
  ~GrowingFile();
  GrowingFile(const GrowingFile&) = delete;
  GrowingFile& operator=(const GrowingFile&) = delete;

  const std::string& path() const { return path_; }
  /// Brings the content to the disk and gives it the target's name; fails (3204) when there is such a file.
  void appear();

 private:
  std::string target_, path_;
  int descriptor_ = -1;
};

/// Fails (3204) when there is a file, also a dangling link, and with another number when there can't be one.
void requireNoFile(const std::string& path);
