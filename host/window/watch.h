#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace host {

/// Keeps the window alive while LISP runs for long: every 50 milliseconds the evaluation looks about. Escape
/// ends it; what else a person does with keys and mouse meanwhile is lost, as nobody waits for it.
class Watch {
 public:
  struct Listeners {
    /// Shows what has changed.
    std::function<void()> onLook;
    /// The window was asked to close.
    std::function<void()> onClose;
  };
  explicit Watch(Listeners listeners);
  ~Watch();
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

  /// What a person does was served just now: only LISP that runs on from here is long.
  void noteServed() { served_ = std::chrono::steady_clock::now(); }

  /// As long as this lives, an evaluation is looked after.
  class Over {
   public:
    explicit Over(Watch& watch) : watch_(watch) { watch_.count(1); }
    ~Over() { watch_.count(-1); }
    Over(const Over&) = delete;
    Over& operator=(const Over&) = delete;

   private:
    Watch& watch_;
  };

 private:
  void count(int more);
  void remind();
  void look();

  const Listeners listeners_;
  bool looking_ = false;
  std::chrono::steady_clock::time_point served_;
  std::mutex mutex_;
  std::condition_variable changed_;
  int watched_ = 0;
  bool ended_ = false;
  std::thread thread_;
};

}  // namespace host
