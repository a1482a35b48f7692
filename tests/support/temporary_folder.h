#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/// A folder for one test, in memory where that can be had, removed with all that is in it.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    const std::filesystem::path memory = "/dev/shm";
    std::error_code none;
    const bool isThere = std::filesystem::is_directory(memory, none);
    std::string name = (isThere ? memory : std::filesystem::temp_directory_path()) / "zarbo-test-XXXXXX";
    path_ = mkdtemp(name.data());
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  std::filesystem::path operator/(const std::string& name) const { return path_ / name; }
  const std::filesystem::path& path() const { return path_; }
  std::string file(const std::string& name) const { return path_ / name; }
  std::wstring wide(const std::string& name) const { return (path_ / name).wstring(); }
  void write(const std::string& name, const std::string& text) const {
    std::ofstream(path_ / name, std::ios::binary) << text;
  }
  std::string read(const std::string& name) const {
    std::ifstream file(path_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  /// Names in it, hidden ones too.
  size_t count() const {
    const auto begin = std::filesystem::directory_iterator(path_);
    return static_cast<size_t>(std::distance(begin, std::filesystem::directory_iterator()));
  }

 private:
  std::filesystem::path path_;
};
