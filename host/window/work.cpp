#include "host/window/work.h"

#include <QEventLoop>
#include <utility>

namespace host {

void Work::add(Job job) {
  jobs_.push_back(std::move(job));
  if (idle_) idle_->quit();
}

void Work::runAll() {
  if (busy_) return;
  while (!jobs_.empty()) {
    const Job job = std::move(jobs_.front());
    jobs_.pop_front();
    const Busy busy(*this);
    job();
  }
}

void Work::waitForJob() {
  if (!jobs_.empty()) return;
  QEventLoop idle;
  idle_ = &idle;
  idle.exec();
  idle_ = nullptr;
}

}  // namespace host
