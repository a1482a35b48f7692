#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "platform/desktop/desktop.h"

/// Shows in the host's status bar how far a longer piece of work has come. What stood there before comes back
/// with the meter's end. Work that is over within half a second shows nothing.
class ProgressMeter {
 public:
  using Clock = std::chrono::steady_clock;
  explicit ProgressMeter(std::wstring label, Clock::time_point begun = Clock::now());
  ~ProgressMeter();
  ProgressMeter(const ProgressMeter&) = delete;
  ProgressMeter& operator=(const ProgressMeter&) = delete;

  /// Of any unit; a total that isn't known is 0. May be called as often as one likes.
  void show(int64_t come, int64_t total, Clock::time_point now = Clock::now());

 private:
  std::wstring label_;
  platform::Desktop::MainWindow former_;
  Clock::time_point next_;
  bool shown_ = false;
};
