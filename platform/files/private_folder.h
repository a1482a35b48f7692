#pragma once

#include <string>

namespace platform {

/// A new folder that only the user can enter, and that goes with all that it holds.
class PrivateFolder {
 public:
  /// Inside this one; the path is native.
  explicit PrivateFolder(const std::string& parent);
  ~PrivateFolder();
  PrivateFolder(const PrivateFolder&) = delete;
  PrivateFolder& operator=(const PrivateFolder&) = delete;
  bool good() const { return !path_.empty(); }
  /// Empty when the folder couldn't be made.
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace platform
