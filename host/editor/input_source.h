#pragma once

#include <coroutine>

#include "host/editor/request.h"

namespace host {

/// Where input comes from: the user, or the arguments of a command with the user behind them.
class InputSource {
 public:
  virtual ~InputSource() = default;
  virtual void prompt(const std::wstring& text) = 0;
  /// Tells what became of what came in.
  virtual void say(const std::wstring& text) = 0;
  /// False when what asks has to wait until more has been given; `waiting` is resumed then.
  virtual bool ready() const = 0;
  /// Only when ready.
  virtual InputItem take(const Request& request) = 0;
  /// Nothing more will come, so that a selection is complete although nobody has said so.
  virtual bool endsSelection() const { return false; }

  std::coroutine_handle<> waiting;

 protected:
  /// On the command line. A prompt right behind what was told begins a line of its own.
  void show(const std::wstring& prompt);
  void tell(const std::wstring& text);

 private:
  std::optional<size_t> toldUpTo_;
};

/// `co_await NextInput{source, request}`.
struct NextInput {
  InputSource& source;
  const Request& request;
  bool await_ready() const { return source.ready(); }
  void await_suspend(std::coroutine_handle<> asking) const { source.waiting = asking; }
  InputItem await_resume() const { return source.take(request); }
};

}  // namespace host
