#include "platform/com/call_trace.h"

#include <atomic>
#include <deque>
#include <iterator>
#include <mutex>

namespace {

constexpr size_t mostCalls = 100'000;

struct Trace {
  std::atomic<bool> on = false;
  std::mutex mutex;
  std::deque<TracedCall> calls;
};

Trace& trace() {
  static Trace instance;
  return instance;
}

}  // namespace

void setCallTrace(bool on) { trace().on = on; }

bool callTraceOn() { return trace().on.load(std::memory_order_relaxed); }

void recordCall(std::wstring_view method, std::vector<COleVariant> arguments) {
  const std::lock_guard lock(trace().mutex);
  auto& calls = trace().calls;
  if (calls.size() == mostCalls) calls.pop_front();
  calls.push_back({std::wstring(method), std::move(arguments)});
}

std::vector<TracedCall> takeTracedCalls() {
  const std::lock_guard lock(trace().mutex);
  auto& calls = trace().calls;
  std::vector<TracedCall> result(std::make_move_iterator(calls.begin()),
                                 std::make_move_iterator(calls.end()));
  calls.clear();
  return result;
}
