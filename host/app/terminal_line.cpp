#include "host/app/terminal_line.h"

#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "host/calls/command_line.h"
#include "platform/text/utf.h"

namespace host {
namespace {

volatile std::sig_atomic_t interrupted = 0;

void onInterrupt(int) { interrupted = 1; }

/// As long as this lives, an interrupt ends a read that waits, and does nothing else.
class InterruptEndsRead {
 public:
  InterruptEndsRead() {
    interrupted = 0;
    struct sigaction own {};
    own.sa_handler = onInterrupt;  // without SA_RESTART
    sigaction(SIGINT, &own, &former_);
  }
  ~InterruptEndsRead() { sigaction(SIGINT, &former_, nullptr); }
  InterruptEndsRead(const InterruptEndsRead&) = delete;
  InterruptEndsRead& operator=(const InterruptEndsRead&) = delete;

 private:
  struct sigaction former_ {};
};

}  // namespace

std::optional<std::wstring> readTerminalLine() {
  const InterruptEndsRead guard;
  std::string line;
  while (!interrupted) {
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
  return std::nullopt;
}

}  // namespace host
