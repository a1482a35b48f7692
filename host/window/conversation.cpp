#include "host/window/conversation.h"

#include <QApplication>
#include <QEventLoop>
#include <QPointer>
#include <QWidget>
#include <vector>

namespace host {
namespace {

/// Dialogs from inside of which something is asked for stand aside, so that the drawing can be reached.
class DialogsAside {
 public:
  DialogsAside() {
    while (QWidget* const dialog = QApplication::activeModalWidget()) {
      if (!dialog->isVisible()) break;
      dialogs_.emplace_back(dialog);
      dialog->hide();
    }
  }
  ~DialogsAside() {
    for (auto each = dialogs_.rbegin(); each != dialogs_.rend(); ++each) {
      if (*each) (*each)->show();
    }
  }
  DialogsAside(const DialogsAside&) = delete;
  DialogsAside& operator=(const DialogsAside&) = delete;

 private:
  std::vector<QPointer<QWidget>> dialogs_;
};

}  // namespace

void Conversation::give(InputItem item) {
  if (!request_ || (answer_ && !std::holds_alternative<Moved>(*answer_))) return;
  answer_ = std::move(item);
  if (loop_) loop_->quit();
}

std::optional<std::wstring> Conversation::takeAhead() {
  if (ahead_.empty()) return std::nullopt;
  std::wstring first = std::move(ahead_.front());
  ahead_.pop_front();
  return first;
}

void Conversation::moveTo(const AcGePoint3d& point) {
  if (request_ && request_->followsCursor) give(Moved{point});
}

void Conversation::cancelPrompts() {
  cancelling_ = true;
  give(Cancel{});
}

InputItem Conversation::wait(const Request& request) {
  if (cancelling_) return Cancel{};
  if (const auto line = takeAhead()) return line->empty() ? InputItem(Enter{}) : InputItem(Typed{*line});
  const DialogsAside aside;
  const Request* const outer = std::exchange(request_, &request);
  QEventLoop* const outerLoop = std::exchange(loop_, nullptr);
  answer_.reset();
  if (listener_) listener_();
  while (!answer_ && play_ && play_()) continue;
  if (!answer_ && !isAlone_) {
    QEventLoop loop;
    loop_ = &loop;
    loop.exec();
  }
  InputItem given = answer_ ? std::move(*answer_) : InputItem(Cancel{});
  answer_.reset();
  request_ = outer;
  loop_ = outerLoop;
  if (listener_) listener_();
  return given;
}

}  // namespace host
