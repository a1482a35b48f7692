#pragma once

#include <coroutine>
#include <exception>
#include <optional>
#include <utility>

namespace host {

/// A piece of work that may wait for input in its middle. A task runs when it is awaited, or when its owner
/// starts it; destroying it where it waits abandons it with all that it awaits.
///
/// g++ 12 destroys an aggregate that is made in braces within the awaited expression twice: name it first.
template <class T = void>
class Task;

namespace detail {

struct PromiseBase {
  std::coroutine_handle<> awaiting;
  std::exception_ptr failure;

  std::suspend_always initial_suspend() noexcept { return {}; }
  struct GoOn {
    bool await_ready() noexcept { return false; }
    template <class Promise>
    std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> ended) noexcept {
      const std::coroutine_handle<> next = ended.promise().awaiting;
      return next ? next : std::noop_coroutine();
    }
    void await_resume() noexcept {}
  };
  GoOn final_suspend() noexcept { return {}; }
  void unhandled_exception() { failure = std::current_exception(); }
};

template <class T>
struct Promise : PromiseBase {
  std::optional<T> value;
  Task<T> get_return_object();
  void return_value(T result) { value = std::move(result); }
  T take() {
    if (failure) std::rethrow_exception(failure);
    return std::move(*value);
  }
};

template <>
struct Promise<void> : PromiseBase {
  Task<void> get_return_object();
  void return_void() {}
  void take() {
    if (failure) std::rethrow_exception(failure);
  }
};

}  // namespace detail

template <class T>
class [[nodiscard]] Task {
 public:
  using promise_type = detail::Promise<T>;
  using Handle = std::coroutine_handle<promise_type>;

  explicit Task(Handle handle) : handle_(handle) {}
  Task(Task&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  Task& operator=(Task&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~Task() {
    if (handle_) handle_.destroy();
  }

  bool await_ready() const noexcept { return false; }
  std::coroutine_handle<> await_suspend(std::coroutine_handle<> awaiting) noexcept {
    handle_.promise().awaiting = awaiting;
    return handle_;
  }
  T await_resume() { return handle_.promise().take(); }

  // For the owner of the outermost task.
  void start() { handle_.resume(); }
  bool done() const { return handle_.done(); }
  /// Only of a task that is done; throws what the work threw.
  T result() { return handle_.promise().take(); }

 private:
  Handle handle_;
};

namespace detail {

template <class T>
Task<T> Promise<T>::get_return_object() {
  return Task<T>(std::coroutine_handle<Promise>::from_promise(*this));
}
inline Task<void> Promise<void>::get_return_object() {
  return Task<void>(std::coroutine_handle<Promise>::from_promise(*this));
}

}  // namespace detail
}  // namespace host
