#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace platform {

/// A file that is read and written by places, counted in bytes from its beginning.
class PlacedFile {
 public:
  /// Opens one that is there; the path is native.
  explicit PlacedFile(const std::string& path);
  ~PlacedFile();
  PlacedFile(const PlacedFile&) = delete;
  PlacedFile& operator=(const PlacedFile&) = delete;

  bool good() const { return descriptor_ >= 0; }
  /// As it was when the file was opened.
  int64_t size() const { return size_; }
  /// What would lie behind the end of the file stays as it was in `bytes`.
  bool read(int64_t place, void* bytes, size_t count) const;
  bool write(int64_t place, const void* bytes, size_t count);

 private:
  int descriptor_;
  int64_t size_ = 0;
};

}  // namespace platform
