#pragma once

#include <deque>
#include <functional>

class QEventLoop;

namespace host {

/// What the window has to do, one thing after the other: never inside of another, and never inside of an
/// event handler of the toolkit, through which nothing may be thrown.
class Work {
 public:
  using Job = std::function<void()>;

  void add(Job job);
  bool isBusy() const { return busy_; }
  bool isWaiting() const { return !jobs_.empty(); }
  /// Runs what waits, and what that adds; nothing when something runs already.
  void runAll();
  /// Serves events until something is there to do.
  void waitForJob();

  /// As long as this lives, something runs.
  class Busy {
   public:
    explicit Busy(Work& work) : work_(work), former_(work.busy_) { work.busy_ = true; }
    ~Busy() { work_.busy_ = former_; }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

   private:
    Work& work_;
    bool former_;
  };

 private:
  std::deque<Job> jobs_;
  bool busy_ = false;
  QEventLoop* idle_ = nullptr;
};

}  // namespace host
