#include "engine/jet_snapshot.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <mutex>
#include <vector>

#include "engine/errors/errors.h"

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

/// Runs a program to its end. Gives its exit status, or -1, and what it printed on standard error.
int runProgram(const std::vector<std::string>& words, std::string& errors) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return -1;
  std::vector<char*> arguments;
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDERR_FILENO);
  pid_t child = -1;
  const int failure = posix_spawn(&child, words[0].c_str(), &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(ends[1]);
  char bytes[1024];
  while (failure == 0) {
    const ssize_t count = read(ends[0], bytes, sizeof bytes);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;
    errors.append(bytes, static_cast<size_t>(count));
  }
  close(ends[0]);
  int status = 0;
  if (failure != 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status)) return -1;
  return WEXITSTATUS(status);
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
