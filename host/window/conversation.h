#pragma once

#include <deque>
#include <functional>
#include <optional>

#include "host/editor/person.h"

class QEventLoop;

namespace host {

/// What the window and the person before it have to say to each other: the prompt that waits, and the answer
/// that comes from a click, a key or a line. Points are of the user coordinate system.
class Conversation {
 public:
  /// Null when no prompt waits.
  const Request* request() const { return request_; }
  /// What shows prompts hears of each that begins or ends.
  void onChange(std::function<void()> listener) { listener_ = std::move(listener); }
  /// Who answers before the person does: false when it has nothing more to say. When it is alone, what it
  /// leaves unanswered is cancelled.
  void setPlayer(std::function<bool()> play, bool isAlone) { play_ = std::move(play), isAlone_ = isAlone; }

  /// Ends the waiting of the prompt; without one nothing happens. What is meant goes before where the cursor
  /// was on its way.
  void give(InputItem item);
  /// What is typed while something is about to run, for the next prompt, or else the next command.
  void typeAhead(std::wstring line) { ahead_.push_back(std::move(line)); }
  std::optional<std::wstring> takeAhead();
  bool hasAhead() const { return !ahead_.empty(); }
  void forgetAhead() { ahead_.clear(); }
  /// The cursor has moved; counts where the prompt follows it.
  void moveTo(const AcGePoint3d& point);

  /// Cancels the prompt that waits, and every later one until `allowPrompts`.
  void cancelPrompts();
  void allowPrompts() { cancelling_ = false; }

  /// Waits for the answer.
  InputItem wait(const Request& request);

 private:
  const Request* request_ = nullptr;
  std::optional<InputItem> answer_;
  std::deque<std::wstring> ahead_;
  bool cancelling_ = false;
  QEventLoop* loop_ = nullptr;
  std::function<void()> listener_;
  std::function<bool()> play_;
  bool isAlone_ = false;
};

/// The person before the window. Present unless scripts play one and have nothing to say.
class WindowPerson final : public Person {
 public:
  WindowPerson(Conversation& conversation, std::function<bool()> isPresent)
      : conversation_(conversation), isPresent_(std::move(isPresent)) {}
  InputItem next(const Request& request) override { return conversation_.wait(request); }
  bool isPresent() const override { return isPresent_(); }
  bool hasScreen() const override { return true; }

 private:
  Conversation& conversation_;
  std::function<bool()> isPresent_;
};

}  // namespace host
