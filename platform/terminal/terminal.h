#pragma once

#include <chrono>
#include <memory>
#include <optional>

namespace platform {

enum class Stream { input, output, errors };
/// Whether a person sits at the other end.
bool isTerminal(Stream stream);

/// Until a key is typed, or the time is over.
void waitForKey(std::chrono::milliseconds longest);

/// Interrupts are what the person's Ctrl+C sends. Noted ones stay so that none is lost between a look and the
/// wait behind it. Both calls are safe in a handler of interrupts.
void noteInterrupt();
void forgetInterrupts();

enum class Awaited { input, interrupt, nothing };
/// Input to read or the end of it, a noted interrupt, or the end of the time; `nullopt` has none.
Awaited waitForTerminal(std::optional<std::chrono::milliseconds> longest);
/// A byte of the standard input, past all buffers; nothing at its end.
std::optional<char> readTerminalByte();

/// Calls the handler at each interrupt, in the middle of whatever runs, as long as this lives.
class InterruptHandler {
 public:
  explicit InterruptHandler(void (*handler)());
  ~InterruptHandler();
  InterruptHandler(const InterruptHandler&) = delete;
  InterruptHandler& operator=(const InterruptHandler&) = delete;

 private:
  struct Former;
  std::unique_ptr<Former> former_;
};

}  // namespace platform
