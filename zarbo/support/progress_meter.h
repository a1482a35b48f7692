#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "platform/desktop/desktop.h"

/// Shows in the host's status bar how far a longer piece of work has come. What stood there before comes back
/// with the meter's end. Work that is over within half a second shows nothing.
class ProgressMeter {
 public:
  explicit ProgressMeter(std::wstring label);
  ~ProgressMeter();
  ProgressMeter(const ProgressMeter&) = delete;
  ProgressMeter& operator=(const ProgressMeter&) = delete;

  /// Of any unit; a total that isn't known is 0. May be called as often as one likes.
  void show(int64_t come, int64_t total);

 private:
  std::wstring label_;
  platform::Desktop::MainWindow former_;
  std::chrono::steady_clock::time_point next_;
  bool shown_ = false;
};
