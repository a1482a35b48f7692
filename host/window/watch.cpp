#include "host/window/watch.h"

#include <QApplication>
#include <QKeyEvent>
#include <chrono>

#include "host/lisp/interpreter.h"

namespace host {
namespace {

constexpr std::chrono::milliseconds interval{50};
/// So long keys and clicks wait for the next prompt.
constexpr std::chrono::milliseconds patience{250};

/// Keeps what a person does from the windows, and notes Escape and the wish to close.
class Sieve : public QObject {
 public:
  Sieve() { qApp->installEventFilter(this); }
  bool isStopped() const { return stopped_; }
  bool isClosed() const { return closed_; }

  bool eventFilter(QObject* watched, QEvent* event) override {
    switch (event->type()) {
      case QEvent::KeyPress:
        stopped_ = stopped_ || static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
        return true;
      case QEvent::Close:
        if (!watched->isWidgetType()) return false;
        closed_ = true;
        event->ignore();
        return true;
      case QEvent::KeyRelease:
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonRelease:
      case QEvent::MouseButtonDblClick:
      case QEvent::MouseMove:
      case QEvent::Wheel:
      case QEvent::ContextMenu:
      case QEvent::Shortcut:
      case QEvent::ShortcutOverride:
        return true;
      default:
        return false;
    }
  }

 private:
  bool stopped_ = false, closed_ = false;
};

}  // namespace

Watch::Watch(Listeners listeners) : listeners_(std::move(listeners)), thread_([this] { remind(); }) {
  lisp::Interpreter::setLook([this] { look(); });
}

Watch::~Watch() {
  lisp::Interpreter::setLook({});
  {
    const std::lock_guard lock(mutex_);
    ended_ = true;
  }
  changed_.notify_one();
  thread_.join();
}

void Watch::count(int more) {
  {
    const std::lock_guard lock(mutex_);
    watched_ += more;
  }
  changed_.notify_one();
}

/// Runs in a thread of its own, and does nothing but remind.
void Watch::remind() {
  std::unique_lock lock(mutex_);
  while (!ended_) {
    if (watched_ == 0) {
      changed_.wait(lock, [this] { return ended_ || watched_ > 0; });
    } else if (!changed_.wait_for(lock, interval, [this] { return ended_ || watched_ == 0; })) {
      lisp::Interpreter::lookUp();
    }
  }
}

void Watch::look() {
  if (looking_ || std::chrono::steady_clock::now() - served_ < patience) return;
  struct Looking {
    bool& flag;
    ~Looking() { flag = false; }
  } looking{looking_};
  looking_ = true;
  const Sieve sieve;
  if (listeners_.onLook) listeners_.onLook();
  QCoreApplication::processEvents();
  if (sieve.isStopped()) lisp::Interpreter::interrupt();
  if (sieve.isClosed() && listeners_.onClose) listeners_.onClose();
}

}  // namespace host
