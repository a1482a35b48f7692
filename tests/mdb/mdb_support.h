#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

/// A folder that goes with the object.
class Folder {
 public:
  Folder() : path_((std::filesystem::temp_directory_path() / "zarbo-mdb-test-XXXXXX").string()) {
    EXPECT_NE(mkdtemp(path_.data()), nullptr);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() { std::filesystem::remove_all(path_); }
  std::string file(const std::string& name) const { return path_ + "/" + name; }
  size_t entries() const {
    return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(path_), {}));
  }

 private:
  std::string path_;
};

inline std::string write(const std::string& path, const std::vector<uint8_t>& bytes) {
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  return path;
}

struct Ran {
  int status;  ///< exit status, or -1 when the program broke down
  std::string output;
};

/// Runs a command line of the shell.
inline Ran runCommand(const std::string& command) {
  FILE* pipe = popen(command.c_str(), "r");
  if (!pipe) return {-1, ""};
  Ran ran{0, ""};
  std::array<char, 65536> bytes;
  for (size_t count; (count = fread(bytes.data(), 1, bytes.size(), pipe)) > 0;)
    ran.output.append(bytes.data(), count);
  const int status = pclose(pipe);
  ran.status = WIFEXITED(status) && WEXITSTATUS(status) < 126 ? WEXITSTATUS(status) : -1;
  return ran;
}
