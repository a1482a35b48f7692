#include "platform/process/isolated.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool memoryIsLimited = false;  // the sanitizer reserves far more than it uses
#else
constexpr bool memoryIsLimited = true;
#endif

void writeAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = write(descriptor, bytes.data(), bytes.size());
    if (count <= 0) return;
    bytes.remove_prefix(static_cast<size_t>(count));
  }
}

[[noreturn]] void runChild(const std::function<int(const Tell&)>& work, int pipe, size_t memory) {
  if (memoryIsLimited) {
    const rlimit limit{memory, memory};
    setrlimit(RLIMIT_AS, &limit);
  }
  signal(SIGPIPE, SIG_DFL);  // who stops reading, as head does, ends the work
  const rlimit noCore{0, 0};
  setrlimit(RLIMIT_CORE, &noCore);
  if (const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC); nowhere >= 0) dup2(nowhere, STDERR_FILENO);
  const int status = work([pipe](std::string_view bytes) { writeAll(pipe, bytes); });
  fflush(stdout);
  _exit(status);
}

/// False when the child has told nothing for too long.
bool listen(int pipe, const Tell& heard, std::chrono::milliseconds silence) {
  char bytes[4096];
  pollfd waiting{pipe, POLLIN, 0};
  while (true) {
    const int ready = poll(&waiting, 1, static_cast<int>(silence.count()));
    if (ready < 0 && errno == EINTR) continue;
    if (ready == 0) return false;
    const ssize_t count = read(pipe, bytes, sizeof bytes);
    if (count <= 0) return true;
    heard({bytes, static_cast<size_t>(count)});
  }
}

IsolatedEnd endOf(int status) {
  if (!WIFSIGNALED(status)) return {IsolatedEnd::Kind::returned, WEXITSTATUS(status), {}};
  const int number = WTERMSIG(status);
  const auto kind = number == SIGPIPE ? IsolatedEnd::Kind::outputClosed : IsolatedEnd::Kind::crashed;
  return {kind, 128 + number, strsignal(number)};
}

IsolatedEnd notStarted(const char* what) {
  return {IsolatedEnd::Kind::notStarted, 1, std::string(what) + ": " + strerror(errno)};
}

}  // namespace

IsolatedEnd runIsolated(const std::function<int(const Tell&)>& work, const Tell& heard,
                        const IsolatedLimits& limits) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return notStarted("no pipe");
  fflush(stdout);
  const pid_t child = fork();
  if (child == 0) {
    close(ends[0]);
    runChild(work, ends[1], limits.memory);
  }
  const IsolatedEnd refused = child < 0 ? notStarted("no process") : IsolatedEnd();
  close(ends[1]);
  const bool silent = child > 0 && !listen(ends[0], heard, limits.silence);
  close(ends[0]);
  if (child < 0) return refused;
  if (silent) kill(child, SIGKILL);
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  return silent ? IsolatedEnd{IsolatedEnd::Kind::silent, 1, {}} : endOf(status);
}
