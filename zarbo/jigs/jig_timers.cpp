#include "zarbo/jigs/jig_timers.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <vector>

#include "brx/documents.h"
#include "brx/lisp_calls.h"
#include "platform/desktop/desktop.h"
#include "zarbo/desktop/host_windows.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"
#include "zarbo/jigs/jig_functions.h"

namespace {

using std::chrono::milliseconds;

/// From here on a timer is a safety net, which doesn't ask what the document is doing.
constexpr milliseconds unconditional{10'000};
/// The system's own bounds.
constexpr milliseconds shortest{10}, longest{0x7fffffff};

std::vector<unsigned>& running() {
  static std::vector<unsigned> timers;
  return timers;
}

void stopTimer(unsigned timer) {
  platform::desktop().stopTimer(timer);
  std::erase(running(), timer);
}

bool documentIsQuiescent() {
  const AcApDocument* const document = acDocManagerPtr()->curDocument();
  return !document || document->isQuiescent();
}

unsigned startTimer(milliseconds interval) {
  const auto timer = std::make_shared<unsigned>(0);
  *timer = platform::desktop().startTimer(std::clamp(interval, shortest, longest), [timer, interval] {
    if (interval < unconditional && !documentIsQuiescent()) return;
    enableMainWindow(true);
    stopTimer(*timer);
  });
  running().push_back(*timer);
  return *timer;
}

}  // namespace

void stopJigTimers() {
  while (!running().empty()) stopTimer(running().back());
}

int kvCreateJigTimer() {
  acedRetNil();
  LispArgs args;
  int32_t interval;
  if (!getLong(args.cursor, interval)) return wrongType;
  // The system reads a negative number as a large one.
  acedRetInt(static_cast<int>(startTimer(milliseconds(static_cast<uint32_t>(interval)))));
  return done;
}

int kvKillJigTimer() {
  acedRetVoid();
  LispArgs args;
  int32_t timer;
  if (!getLong(args.cursor, timer)) return wrongType;
  if (timer != 0) stopTimer(static_cast<unsigned>(timer));
  return done;
}
