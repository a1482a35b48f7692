#include "platform/process/programs.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

namespace {

/// Gives the child's number, -1 when it can't be started.
pid_t spawn(const std::vector<std::string>& words, const posix_spawn_file_actions_t* actions) {
  std::vector<char*> arguments;
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  pid_t child = -1;
  return posix_spawnp(&child, arguments[0], actions, nullptr, arguments.data(), environ) == 0 ? child : -1;
}

}  // namespace

bool startProgram(const std::vector<std::string>& words) {
  // Those that have ended leave an entry in the process table until someone asks for it.
  static std::vector<pid_t> started;
  std::erase_if(started, [](pid_t each) { return waitpid(each, nullptr, WNOHANG) != 0; });
  const pid_t child = spawn(words, nullptr);
  if (child >= 0) started.push_back(child);
  return child >= 0;
}

int runProgram(const std::vector<std::string>& words, std::string& errors) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return -1;
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDERR_FILENO);
  const pid_t child = spawn(words, &actions);
  posix_spawn_file_actions_destroy(&actions);
  close(ends[1]);
  char bytes[1024];
  while (child >= 0) {
    const ssize_t count = read(ends[0], bytes, sizeof bytes);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;
    errors.append(bytes, static_cast<size_t>(count));
  }
  close(ends[0]);
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status)) return -1;
  return WEXITSTATUS(status);
}
