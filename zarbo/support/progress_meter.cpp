#include "zarbo/support/progress_meter.h"

namespace {

using namespace std::chrono_literals;

constexpr auto patience = 500ms, interval = 50ms;
constexpr int fullScale = 1000;

}  // namespace

ProgressMeter::ProgressMeter(std::wstring label, Clock::time_point begun)
    : label_(std::move(label)), next_(begun + patience) {}

ProgressMeter::~ProgressMeter() {
  if (!shown_) return;
  platform::Desktop::MainWindow state = platform::desktop().mainWindow();
  state.meterShown = former_.meterShown;
  state.progressLabel = former_.progressLabel;
  state.progressMinimum = former_.progressMinimum;
  state.progressMaximum = former_.progressMaximum;
  state.progress = former_.progress;
  platform::desktop().setMainWindow(std::move(state));
}

void ProgressMeter::show(int64_t come, int64_t total, Clock::time_point now) {
  if (now < next_) return;
  next_ = now + interval;
  platform::Desktop::MainWindow state = platform::desktop().mainWindow();
  if (!shown_) former_ = state;
  shown_ = true;
  state.meterShown = true;
  state.progressLabel = label_;
  state.progressMinimum = 0;
  state.progressMaximum = fullScale;
  state.progress =
      total > 0 ? static_cast<int>(static_cast<double>(come) / static_cast<double>(total) * fullScale) : 0;
  platform::desktop().setMainWindow(std::move(state));
}
