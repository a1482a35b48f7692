#pragma once

#include <QEvent>
#include <QTimer>
#include <deque>
#include <string>
#include <variant>
#include <vector>

#include "brx/ge_point.h"
#include "host/window/main_window.h"

namespace host {

/// Something that a person does before the window, laid ready by a script.
struct Deed {
  using Value = std::variant<double, std::wstring, AcGePoint3d>;
  std::wstring verb;
  std::vector<Value> values;
};

/// Plays a person before the window: each deed becomes the events of the toolkit that a hand makes. Deeds
/// wait until the window waits for an answer to a prompt or for the end of a dialog, or, when they are
/// released for that, for the next command.
class Player {
 public:
  using LogValue = std::variant<bool, std::wstring>;

  /// Where the player is alone before the window, dialogs for which it has nothing left are cancelled.
  Player(MainWindow& window, bool isAlone);

  void add(Deed deed);
  bool hasDeeds() const { return !deeds_.empty(); }
  /// What waits is meant for the time in which no prompt waits.
  void releaseAtIdle() { released_ = true; }
  bool takeRelease() { return std::exchange(released_, false); }
  /// Plays the next one; false when there is none.
  bool playNext();
  /// Plays what is meant for the time in which LISP runs.
  void playBusy();
  std::vector<LogValue> takeLog() { return std::exchange(log_, {}); }

  /// Empty when there is such a deed and it takes these values, else what is wrong.
  static std::wstring problemOf(const Deed& deed);

 private:
  void play(const Deed& deed);
  void playMouse(const Deed& deed);
  void press(Qt::MouseButton button, const QPointF& place, Qt::KeyboardModifiers keys);
  void release(const QPointF& place, Qt::KeyboardModifiers keys);
  void send(QEvent::Type type, Qt::MouseButton button, const QPointF& place, Qt::KeyboardModifiers keys);
  void wheel(double notches, const QPointF& place);
  void key(const std::wstring& name);
  void type(const std::wstring& text);
  void pressEntry(const std::wstring& name);
  void tell(const std::wstring& what);
  void compare(const std::wstring& file, double tolerance);
  QImage pictureWithDialogs();
  QPointF placeOf(const Deed& deed, size_t& at);
  /// A modal dialog that keeps the hand from the window.
  bool isBlocked() const;
  void note(std::wstring text) { log_.emplace_back(std::move(text)); }

  MainWindow& window_;
  const bool isAlone_;
  bool released_ = false;
  std::deque<Deed> deeds_, busyDeeds_;
  std::vector<LogValue> log_;
  QTimer dialogs_;
  Qt::MouseButtons held_;
};

}  // namespace host
