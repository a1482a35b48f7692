#include "tools/zarbo_mdb/guarded_run.h"

#include <algorithm>
#include <cstdlib>
#include <exception>

namespace {

/// A reader that tells nothing for so long goes round in circles.
constexpr IsolatedLimits limits{std::chrono::minutes(1), size_t{4} << 30};

/// Takes the child's lines apart.
class Listener {
 public:
  explicit Listener(const ReportView& view) : view_(view) {}

  void take(std::string_view bytes) {
    pending_.append(bytes);
    size_t from = 0;
    for (size_t end; (end = pending_.find('\n', from)) != std::string::npos; from = end + 1)
      line(pending_.substr(from, end - from));
    pending_.erase(0, from);
  }
  bool failed() const { return failed_; }
  void fail(const std::string& text) {
    failed_ = true;
    view_.error(place_.empty() ? text : text + " at " + place_);
  }

 private:
  void line(const std::string& text) {
    if (text.empty()) return;
    const std::string content = text.substr(1);
    if (text[0] == '@') place_ = content;
    if (text[0] == '-') view_.note(content);
    if (text[0] == '%') {
      size_t slash = std::min(content.find('/'), content.size());
      view_.progress(strtoul(content.c_str(), nullptr, 10),
                     strtoul(content.c_str() + slash + 1, nullptr, 10));
    }
    if (text[0] == '!') {
      failed_ = true;
      view_.error(content);
    }
  }

  const ReportView& view_;
  std::string pending_, place_;
  bool failed_ = false;
};

}  // namespace

void Report::send(char kind, std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  tell_(kind + text + '\n');
}

int runGuarded(const std::function<int(Report&)>& work, const ReportView& view) {
  const auto guarded = [&](const Tell& tell) {
    Report report(tell);
    try {
      return work(report);
    } catch (const std::exception& error) {
      report.error(error.what());
      return 1;
    }
  };
  Listener listener(view);
  const IsolatedEnd end = runIsolated(
      guarded, [&](std::string_view bytes) { listener.take(bytes); }, limits);
  switch (end.kind) {
    case IsolatedEnd::Kind::returned:
      if (end.status != 0 && !listener.failed()) listener.fail("the reader failed");
      return end.status;
    case IsolatedEnd::Kind::outputClosed:
      return end.status;
    case IsolatedEnd::Kind::crashed:
      listener.fail("the file is damaged: the reader broke down (" + end.reason + ")");
      break;
    case IsolatedEnd::Kind::silent:
      listener.fail("the file is damaged: reading doesn't come to an end");
      break;
    case IsolatedEnd::Kind::notStarted:
      view.error(end.reason);
      break;
  }
  return 1;
}
