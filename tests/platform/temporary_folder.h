#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/// A folder for one test, removed with all that is in it.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "zarbo-test-XXXXXX").native();
    path_ = mkdtemp(name.data());
  }
  ~TemporaryFolder() { std::filesystem::remove_all(path_); }
  std::filesystem::path operator/(const std::string& name) const { return path_ / name; }
  const std::filesystem::path& path() const { return path_; }
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
