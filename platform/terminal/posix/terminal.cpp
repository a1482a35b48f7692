#include "platform/terminal/terminal.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <utility>

namespace platform {

namespace {

/// An interrupt puts a byte into it.
struct InterruptPipe {
  int out = -1, in = -1;
  InterruptPipe() {
    int ends[2];
    if (pipe2(ends, O_NONBLOCK | O_CLOEXEC) == 0) out = ends[0], in = ends[1];
  }
};

// Made while the program is loaded, since a handler must not make it.
const InterruptPipe interruptPipe;

std::atomic<void (*)()> interruptHandler = nullptr;

void onSignal(int) {
  const int error = errno;
  if (const auto handler = interruptHandler.load()) handler();
  errno = error;
}

}  // namespace

bool isTerminal(Stream stream) {
  return isatty(stream == Stream::input    ? STDIN_FILENO
                : stream == Stream::output ? STDOUT_FILENO
                                           : STDERR_FILENO) != 0;
}

void waitForKey(std::chrono::milliseconds longest) {
  pollfd key{STDIN_FILENO, POLLIN, 0};
  poll(&key, 1, static_cast<int>(longest.count()));
}

void noteInterrupt() {
  const ssize_t ignored = write(interruptPipe.in, "", 1);
  (void)ignored;
}

void forgetInterrupts() {
  char bytes[64];
  while (read(interruptPipe.out, bytes, sizeof bytes) > 0) continue;
}

Awaited waitForTerminal(std::optional<std::chrono::milliseconds> longest) {
  pollfd watched[] = {{STDIN_FILENO, POLLIN, 0}, {interruptPipe.out, POLLIN, 0}};
  const int ready = poll(watched, 2, longest ? static_cast<int>(longest->count()) : -1);
  if (ready == 0 || (ready < 0 && errno == EINTR)) return Awaited::nothing;
  return (watched[1].revents & POLLIN) != 0 ? Awaited::interrupt : Awaited::input;
}

std::optional<char> readTerminalByte() {
  char byte = 0;
  ssize_t count;
  while ((count = read(STDIN_FILENO, &byte, 1)) < 0 && errno == EINTR) continue;
  return count > 0 ? std::optional(byte) : std::nullopt;
}

struct InterruptHandler::Former {
  struct sigaction action {};
  void (*handler)() = nullptr;
};

InterruptHandler::InterruptHandler(void (*handler)()) : former_(std::make_unique<Former>()) {
  former_->handler = interruptHandler.exchange(handler);
  struct sigaction own {};
  own.sa_handler = onSignal;
  own.sa_flags = SA_RESTART;
  sigaction(SIGINT, &own, &former_->action);
}

InterruptHandler::~InterruptHandler() {
  sigaction(SIGINT, &former_->action, nullptr);
  interruptHandler = former_->handler;
}

}  // namespace platform
