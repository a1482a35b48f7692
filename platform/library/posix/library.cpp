#include "platform/library/library.h"

#include <dlfcn.h>

#include <filesystem>

namespace platform {

const char* libraryEnding() { return ".so"; }

std::unique_ptr<Library> Library::open(const std::string& path, std::string& problem) {
  if (void* const handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    return std::unique_ptr<Library>(new Library(handle));
  }
  const char* const text = dlerror();
  problem = text ? text : "unknown problem";
  return nullptr;
}

Library::~Library() { dlclose(handle_); }

void* Library::find(const char* name) const { return dlsym(handle_, name); }

std::string fileOfCode(const void* code) {
  Dl_info about{};
  if (dladdr(code, &about) == 0 || !about.dli_fname) return {};
  std::error_code problem;
  const std::filesystem::path file = std::filesystem::absolute(about.dli_fname, problem);
  return problem ? std::string() : file.string();
}

std::string programFile() {
  std::error_code problem;
  return std::filesystem::read_symlink("/proc/self/exe", problem).string();
}

}  // namespace platform
