#include "tools/zarbo_mdb/guarded_run.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <exception>

namespace {

/// A reader that tells nothing for so long goes round in circles.
constexpr int silenceMilliseconds = 60'000;
constexpr rlim_t mostMemory = rlim_t{4} << 30;

/// As a shell tells that a program ended by a broken pipe.
constexpr int endedByReader = 128 + SIGPIPE;

#if defined(__SANITIZE_ADDRESS__)
constexpr bool memoryIsLimited = false;  // the sanitizer reserves far more than it uses
#else
constexpr bool memoryIsLimited = true;
#endif

[[noreturn]] void runChild(const std::function<int(Report&)>& work, int pipe) {
  if (memoryIsLimited) {
    const rlimit limit{mostMemory, mostMemory};
    setrlimit(RLIMIT_AS, &limit);
  }
  signal(SIGPIPE, SIG_DFL);  // who stops reading, as head does, ends the work
  const rlimit noCore{0, 0};
  setrlimit(RLIMIT_CORE, &noCore);
  if (const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC); nowhere >= 0) dup2(nowhere, STDERR_FILENO);
  Report report(pipe);
  int status = 1;
  try {
    status = work(report);
  } catch (const std::exception& error) {
    report.error(error.what());
  }
  fflush(stdout);
  _exit(status);
}

/// Takes the child's lines apart.
class Listener {
 public:
  explicit Listener(const ReportView& view) : view_(view) {}

  void take(const char* bytes, size_t count) {
    pending_.append(bytes, count);
    size_t from = 0;
    for (size_t end; (end = pending_.find('\n', from)) != std::string::npos; from = end + 1)
      line(pending_.substr(from, end - from));
    pending_.erase(0, from);
  }
  bool failed() const { return failed_; }
  void fail(const std::string& text) {
    failed_ = true;
    view_.error(place_.empty() ? text : text + " at " + place_);
  }

 private:
  void line(const std::string& text) {
    if (text.empty()) return;
    const std::string content = text.substr(1);
    if (text[0] == '@') place_ = content;
    if (text[0] == '-') view_.note(content);
    if (text[0] == '%') {
      size_t slash = std::min(content.find('/'), content.size());
      view_.progress(strtoul(content.c_str(), nullptr, 10),
                     strtoul(content.c_str() + slash + 1, nullptr, 10));
    }
    if (text[0] == '!') {
      failed_ = true;
      view_.error(content);
    }
  }

  const ReportView& view_;
  std::string pending_, place_;
  bool failed_ = false;
};

}  // namespace

void Report::send(char kind, std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  text.insert(text.begin(), kind);
  text += '\n';
  for (size_t sent = 0; sent < text.size();) {
    const ssize_t count = write(pipe_, text.data() + sent, text.size() - sent);
    if (count <= 0) return;
    sent += static_cast<size_t>(count);
  }
}

int runGuarded(const std::function<int(Report&)>& work, const ReportView& view) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) {
    view.error(std::string("no pipe: ") + strerror(errno));
    return 1;
  }
  fflush(stdout);
  const pid_t child = fork();
  if (child == 0) {
    close(ends[0]);
    runChild(work, ends[1]);
  }
  close(ends[1]);
  if (child < 0) {
    close(ends[0]);
    view.error(std::string("no process: ") + strerror(errno));
    return 1;
  }
  Listener listener(view);
  bool silent = false;
  char bytes[4096];
  pollfd waiting{ends[0], POLLIN, 0};
  while (true) {
    const int ready = poll(&waiting, 1, silenceMilliseconds);
    if (ready < 0 && errno == EINTR) continue;
    if (ready == 0) {
      silent = true;
      kill(child, SIGKILL);
      break;
    }
    const ssize_t count = read(ends[0], bytes, sizeof bytes);
    if (count <= 0) break;
    listener.take(bytes, static_cast<size_t>(count));
  }
  close(ends[0]);
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  if (silent) {
    listener.fail("the file is damaged: reading doesn't come to an end");
  } else if (WIFSIGNALED(status) && WTERMSIG(status) == SIGPIPE) {
    return endedByReader;
  } else if (WIFSIGNALED(status)) {
    listener.fail(std::string("the file is damaged: the reader broke down (") + strsignal(WTERMSIG(status)) +
                  ")");
  } else if (WEXITSTATUS(status) != 0 && !listener.failed()) {
    listener.fail("the reader failed");
  }
  if (silent || WIFSIGNALED(status)) return 1;
  return WEXITSTATUS(status);
}
