#pragma once

#include <memory>
#include <string>

namespace platform {

/// A library that is loaded at run time, for as long as this lives.
class Library {
 public:
  /// Null, with the system's words in `problem`, when it can't be loaded. UTF-8.
  static std::unique_ptr<Library> open(const std::string& path, std::string& problem);
  ~Library();
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  /// Null when it exports nothing of this name.
  void* find(const char* name) const;
  /// A function by name, its type told by the caller.
  template <class Function>
  Function function(const char* name) const {
    return reinterpret_cast<Function>(find(name));
  }

 private:
  explicit Library(void* handle) : handle_(handle) {}
  void* handle_;
};

/// The ending of such files' names, with its point.
const char* libraryEnding();

/// The file of the library or program that holds this code; empty when it can't be told.
std::string fileOfCode(const void* code);
/// The file of the running program; empty when it can't be told.
std::string programFile();

}  // namespace platform
