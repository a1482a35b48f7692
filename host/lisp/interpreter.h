#pragma once

#include <atomic>
#include <cstddef>
#include <exception>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/lisp/objects.h"
#include "host/lisp/services.h"

namespace lisp {

class Reader;
struct Code;

/// An error of the language. `handled` tells that the program's own `*error*` has seen it.
class LispError : public std::exception {
 public:
  explicit LispError(std::wstring message) : message(std::move(message)) {}
  const char* what() const noexcept override { return "LISP error"; }
  /// "; error: " and the message, and a line for each of `callers`.
  std::wstring report() const;
  std::wstring message;
  bool handled = false;
  /// What ran, from the inside out: "AREA", "plan.lsp, line 12". Left empty where the program itself takes
  /// care of the error.
  std::vector<std::wstring> callers;
};

/// `exit`, `quit` and `vl-exit-with-value`: ends what was called from outside.
class LispExit : public LispError {
 public:
  explicit LispExit(Value value = {}) : LispError(L"quit / exit abort"), value(std::move(value)) {}
  Value value;
};

/// The LISP of one document: its symbols with their values, and the evaluator. Values may be handed from
/// one interpreter to another as long as they hold no symbols but T. All of one thread.
class Interpreter {
  enum class End : uint8_t { none, cancelled, memory };

 public:
  explicit Interpreter(Services& services);
  ~Interpreter();
  Interpreter(const Interpreter&) = delete;
  Interpreter& operator=(const Interpreter&) = delete;

  /// Evaluates; throws LispError after the program's `*error*` was called, if it has one.
  Value eval(const Value& form);
  /// Reads and evaluates all of a source text; gives the last value. Errors name file and line where the
  /// text itself is wrong.
  Value evalSource(std::string_view utf8, const std::wstring& fileName);
  /// The same of a file, found on the search path, with ".lsp" added where needed. Throws LispError.
  Value load(const std::wstring& fileName);
  /// Calls a function, a symbol that names one, or a lambda list.
  Value call(const Value& function, Arguments args);
  /// The same of the function that is named so.
  Value call(std::wstring_view name, Arguments args);

  /// Names are without case.
  Symbol* intern(std::wstring_view name);
  /// Null when the symbol was never used.
  Symbol* find(std::wstring_view name) const;
  std::vector<Symbol*> symbols() const;
  /// Defines a function of the host under `name`; `context` and `code` come back in `Call::function`.
  void define(std::wstring_view name, Native native, int fewest = 0, int most = anyCount,
              void* context = nullptr, int code = 0);
  void undefine(std::wstring_view name);

  Services& services() { return services_; }
  const Value& t() const { return t_; }
  Value truth(bool flag) const { return flag ? t_ : Value(); }

  /// Raises a LISP error: the program's `*error*` is called first, where the error happened.
  [[noreturn]] void fail(std::wstring message);

  /// Safe to call from a signal handler: the evaluation ends with an error at its next step.
  static void interrupt() { wantedEnd_ = End::cancelled; }
  /// The same for want of memory, while there is enough left to go on until then.
  static void endForMemory() { wantedEnd_ = End::memory; }
  /// An interrupt that somebody else serves: whether there was one.
  static bool takeInterrupt() {
    End wanted = End::cancelled;
    return wantedEnd_.compare_exchange_strong(wanted, End::none);
  }
  /// The evaluation has ended otherwise, or none was running.
  static void forgetEnd() { wantedEnd_ = End::none; }
  /// Calls and loop rounds that may still be made; for programs that nobody watches. 0 is no limit.
  void limitSteps(uint64_t steps) { stepsLeft_ = steps; }

  /// `vl-catch-all-apply`: an error inside doesn't reach the program's `*error*`.
  template <class Work>
  auto catching(Work work) {
    ++catching_;
    struct Leave {
      int& depth;
      ~Leave() { --depth; }
    } leave{catching_};
    return work();
  }

  // For the evaluator's own parts.

  /// Once for each call and loop round: the place where an evaluation can be ended, and is ended that nests
  /// too deep.
  void step() {
    if (wantedEnd_.load(std::memory_order_relaxed) != End::none || stepsLeft_ != 0) slowStep();
    checkDepth();
  }
  void checkDepth() {
    if (static_cast<const char*>(__builtin_frame_address(0)) < lowestStack_) throwTooDeep();
  }
  /// Values on a stack that never moves. All the room is taken before the first one is made, since making it
  /// may call other functions.
  class Frame {
   public:
    Frame(Interpreter& lisp, size_t room) : lisp_(lisp), begin_(lisp.stackTop_), end_(begin_) {
      if (static_cast<size_t>(lisp.stackEnd_ - lisp.stackTop_) < room) lisp.throwTooDeep();
      lisp.stackTop_ += room;
    }
    ~Frame() {
      while (end_ != begin_) (--end_)->~Value();
      lisp_.stackTop_ = begin_;
    }
    Frame(const Frame&) = delete;
    Frame& operator=(const Frame&) = delete;

    // No more than there is room for.
    void add(const Value& value) { new (end_) Value(value), ++end_; }
    void addResult(const Code& code);
    std::span<Value> values() const { return {begin_, end_}; }

   private:
    Interpreter& lisp_;
    Value* const begin_;
    Value* end_;
  };
  /// The caller holds the function, which may redefine itself while it runs.
  Value apply(const Function& function, Arguments args);
  /// The same where `args` are the caller's own, and may change places with what they hide while the function
  /// runs.
  Value applyInPlace(const Function& function, std::span<Value> args) {
    return function.native ? callNative(function, args) : callLambda(function, args);
  }
  /// What a value in the place of a function calls; raises an error when it can't be called.
  Value functionOf(const Value& value);

 private:
  void slowStep();
  [[noreturn]] void throwTooDeep();
  Value callNative(const Function& function, Arguments args) {
    const int count = static_cast<int>(args.size());
    if (count < function.fewest || count > function.most) failCount(count < function.fewest);
    try {
      return function.native(Call{*this, args, function});
    } catch (...) {
      endNative(function);
    }
  }
  Value callLambda(const Function& function, std::span<Value> args);
  [[noreturn]] void failCount(bool tooFew);
  /// Within a handler: what a native function has thrown becomes an error that the program was told of.
  [[noreturn]] void endNative(const Function& function);
  /// `native` is the function of the language or the host that failed, if one did.
  void tellProgram(LispError& error, const Function* native = nullptr);
  void noteCallers(LispError& error, const Function* native) const;
  Value compiledLambda(const Value& list);

  /// A function of the program that runs, or a source text whose form runs.
  struct Running {
    Interpreter& lisp;
    Running* const outer;
    const Function* const function;
    const Reader* const source;
    Running(Interpreter& lisp, const Function* function, const Reader* source)
        : lisp(lisp), outer(lisp.running_), function(function), source(source) {
      lisp.running_ = this;
    }
    ~Running() { lisp.running_ = outer; }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
  };

  Services& services_;
  std::unordered_map<std::wstring, std::unique_ptr<Symbol>> symbols_;
  std::unique_ptr<std::byte[]> stack_;
  Value *stackTop_, *stackEnd_;
  Value t_;
  Symbol* errorHandler_;
  Symbol* lambdaSymbol_;
  /// Compiled lambda lists, found by the cons that they are, which the entry keeps alive.
  std::unordered_map<const Cons*, std::pair<Value, Value>> lambdas_;
  Running* running_ = nullptr;
  int catching_ = 0;
  bool tellingProgram_ = false;
  uint64_t stepsLeft_ = 0;
  const char* lowestStack_;
  /// One thread runs all interpreters, and whoever asks doesn't know which.
  static inline std::atomic<End> wantedEnd_ = End::none;
};

/// Runs `work`; where it finds no memory, the language's error.
template <class Work>
auto withMemoryErrors(Work work) {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    throw LispError(L"insufficient memory");
  } catch (const std::length_error&) {
    throw LispError(L"insufficient memory");
  }
}

}  // namespace lisp
