#include "engine/jet_snapshot.h"

#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <mutex>

#include "engine/errors/errors.h"
#include "platform/process/programs.h"

namespace {

/// Which state of a file something was made from.
using FileState = std::array<int64_t, 5>;

FileState stateOf(const std::string& path) {
  struct stat attributes {};
  if (stat(path.c_str(), &attributes) != 0) fail(fileNotFound, path);
  return {static_cast<int64_t>(attributes.st_dev), static_cast<int64_t>(attributes.st_ino),
          attributes.st_size, attributes.st_mtim.tv_sec, attributes.st_mtim.tv_nsec};
}

std::string readerProgram() {
  Dl_info library{};
  if (dladdr(reinterpret_cast<const void*>(&readerProgram), &library) == 0) return "zarbo-mdb";
  return (std::filesystem::absolute(library.dli_fname).parent_path() / "zarbo-mdb").string();
}

[[noreturn]] void failReading(const std::string& text) {
  throw jet::Failure{{notADatabase, text, std::nullopt}};
}

}  // namespace

std::shared_ptr<const JetSnapshot> JetSnapshot::of(const std::string& source) {
  static std::mutex mutex;
  static std::shared_ptr<const JetSnapshot> last;
  static FileState lastState;
  const std::lock_guard lock(mutex);
  const FileState state = stateOf(source);
  if (last && last->source() == source && state == lastState) return last;
  last.reset();
  last = std::make_shared<const JetSnapshot>(source);
  lastState = state;
  return last;
}

JetSnapshot::JetSnapshot(const std::string& source) : source_(source) {
  folder_ = (std::filesystem::temp_directory_path() / "zarbo-jet-XXXXXX").string();
  if (!mkdtemp(folder_.data())) fail(noRight, folder_);
  path_ = folder_ + "/snapshot.kv";
  std::string errors;
  const std::string program = readerProgram();
  const int status = runProgram({program, "import", "--quiet", source, path_}, errors);
  if (status == 0) return;
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
  if (status < 0 || errors.empty())
    failReading("The Jet file '" + source + "' can't be read: " + program + " doesn't run.");
  errors.erase(errors.find_last_not_of('\n') + 1);
  failReading("The Jet file can't be read. " + errors);
}

JetSnapshot::~JetSnapshot() {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}
