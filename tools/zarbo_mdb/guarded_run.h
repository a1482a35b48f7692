#pragma once

#include <functional>
#include <string>

#include "platform/process/isolated.h"

/// What a guarded run tells the process that waits for it.
class Report {
 public:
  explicit Report(const Tell& tell) : tell_(tell) {}
  /// What is being read from now on; a crash is told as one there.
  void at(const std::string& place) { send('@', place); }
  void progress(size_t done, size_t all) { send('%', std::to_string(done) + "/" + std::to_string(all)); }
  void note(const std::string& text) { send('-', text); }
  void error(const std::string& text) { send('!', text); }

 private:
  void send(char kind, std::string text);
  const Tell& tell_;
};

/// How the waiting process shows what the guarded one tells.
struct ReportView {
  std::function<void(size_t done, size_t all)> progress;
  std::function<void(const std::string&)> note, error;
};

/// Runs `work` in a process of its own, so that a reader that crashes on a damaged file, eats memory or never
/// ends costs an error that names the place, and nothing else. Gives the result of `work`, or 1 after an
/// error. What libraries print on standard error is dropped.
int runGuarded(const std::function<int(Report&)>& work, const ReportView& view);
