#include "host/app/terminal_line.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "host/bridge/document_lisp.h"
#include "host/console/command_line.h"
#include "platform/desktop/desktop.h"
#include "platform/text/utf.h"

namespace host {
namespace {

/// An interrupt puts a byte into the pipe, so that none is lost between a look and the wait behind it.
struct InterruptPipe {
  int out = -1, in = -1;
  InterruptPipe() {
    int ends[2];
    if (pipe2(ends, O_NONBLOCK | O_CLOEXEC) == 0) out = ends[0], in = ends[1];
  }
};

InterruptPipe& interruptPipe() {
  static InterruptPipe instance;
  return instance;
}

/// As long as this lives, an interrupt is noted and does nothing else.
class InterruptIsNoted {
 public:
  InterruptIsNoted() {
    struct sigaction own {};
    own.sa_handler = [](int) { noteInterrupt(); };
    sigaction(SIGINT, &own, &former_);
  }
  ~InterruptIsNoted() { sigaction(SIGINT, &former_, nullptr); }
  InterruptIsNoted(const InterruptIsNoted&) = delete;
  InterruptIsNoted& operator=(const InterruptIsNoted&) = delete;

 private:
  struct sigaction former_ {};
};

enum class Waited { input, interrupt };

/// How often timers are looked at where there are any, in milliseconds.
constexpr int timerRound = 20;

Waited waitForInput() {
  pollfd watched[] = {{STDIN_FILENO, POLLIN, 0}, {interruptPipe().out, POLLIN, 0}};
  while (true) {
    const int ready = poll(watched, 2, platform::desktop().hasTimers() ? timerRound : -1);
    if (ready > 0 || (ready < 0 && errno != EINTR)) break;
    platform::desktop().runTimers();
  }
  return (watched[1].revents & POLLIN) != 0 ? Waited::interrupt : Waited::input;
}

}  // namespace

void noteInterrupt() {
  const ssize_t ignored = write(interruptPipe().in, "", 1);
  (void)ignored;
}

void forgetInterrupts() {
  char bytes[64];
  while (read(interruptPipe().out, bytes, sizeof bytes) > 0) continue;
}

std::optional<std::wstring> readTerminalLine() {
  interruptPipe();
  const InterruptIsNoted guard;
  std::string line;
  while (waitForInput() == Waited::input) {
    char c = 0;
    const ssize_t got = read(STDIN_FILENO, &c, 1);
    if (got < 0 && errno == EINTR) continue;
    const bool ended = got <= 0;
    if (ended && line.empty()) return std::nullopt;
    if (ended || c == '\n') {
      // The terminal has shown the line with its end.
      commandLine().cursorAtLineBegin();
      return fromUtf8(line);
    }
    line += c;
  }
  // The interrupt was for the prompt, and not for what runs behind it.
  forgetInterrupts();
  lisp::Interpreter::forgetEnd();
  return std::nullopt;
}

}  // namespace host
