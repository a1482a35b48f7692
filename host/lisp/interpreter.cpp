#include "host/lisp/interpreter.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "host/lisp/builtins.h"
#include "host/lisp/code.h"
#include "host/lisp/printer.h"
#include "host/lisp/reader.h"
#include "platform/process/limits.h"
#include "platform/text/letters.h"
#include "platform/text/utf.h"

namespace lisp {
namespace {

constexpr size_t stackValues = size_t{1} << 20;
constexpr size_t keptLambdas = 512;
// What a native function and the clean-up after an error may still need of the C++ stack.
constexpr size_t reservedStack = size_t{1} << 20;
constexpr size_t mostStack = size_t{256} << 20;

const char* lowestUsableStack() {
  const auto* const here = static_cast<const char*>(__builtin_frame_address(0));
  return here - (std::min(stackLimit(), mostStack) - reservedStack);
}

}  // namespace

Interpreter::Interpreter(Services& services)
    : services_(services),
      // The system gives the pages of this one by one, as they are first used.
      stack_(std::make_unique_for_overwrite<std::byte[]>(stackValues * sizeof(Value))),
      stackTop_(reinterpret_cast<Value*>(stack_.get())),
      stackEnd_(stackTop_ + stackValues),
      lowestStack_(lowestUsableStack()) {
  Symbol* const t = intern(L"T");
  t->value = t_ = Value(t);
  t->constant = true;
  errorHandler_ = intern(L"*ERROR*");
  lambdaSymbol_ = intern(L"LAMBDA");
  defineSpecialForms(*this);
  defineBuiltins(*this);
}

Interpreter::~Interpreter() = default;

Symbol* Interpreter::intern(std::wstring_view name) {
  std::wstring key = upperCased(std::wstring(name));
  auto& slot = symbols_[key];
  if (!slot) {
    slot = std::make_unique<Symbol>();
    slot->name = std::move(key);
  }
  return slot.get();
}

Symbol* Interpreter::find(std::wstring_view name) const {
  const auto found = symbols_.find(upperCased(std::wstring(name)));
  return found == symbols_.end() ? nullptr : found->second.get();
}

std::vector<Symbol*> Interpreter::symbols() const {
  std::vector<Symbol*> all;
  for (const auto& [name, symbol] : symbols_) all.push_back(symbol.get());
  return all;
}

void Interpreter::define(std::wstring_view name, Native native, int fewest, int most, void* context,
                         int code) {
  auto* made = new Function;
  made->kind = context ? Function::Kind::external : Function::Kind::subr;
  made->name = upperCased(std::wstring(name));
  made->native = native;
  made->fewest = fewest;
  made->most = most;
  made->context = context;
  made->code = code;
  intern(name)->value = Value(made);
}

void Interpreter::undefine(std::wstring_view name) {
  if (Symbol* const symbol = find(name)) symbol->value = Value();
}

Value Interpreter::eval(const Value& form) {
  // An error leaves nothing behind that a further evaluation would see.
  if (!form.isCons()) return form.isSymbol() ? form.symbol()->value : form;
  return compile(form, *this)->run(*this);
}

Value Interpreter::evalSource(std::string_view utf8, const std::wstring& fileName) {
  Reader reader(*this, utf8, fileName);
  Value last;
  // What natives can't get is told where they are called; this is for reading and analysing.
  withMemoryErrors([&] {
    while (std::optional<Value> form = reader.next()) {
      const Running running(*this, nullptr, &reader);
      last = eval(*form);
    }
  });
  return last;
}

Value Interpreter::load(const std::wstring& fileName) {
  std::optional<std::wstring> path = services_.findFile(fileName);
  if (!path) path = services_.findFile(fileName + L".lsp");
  if (!path) fail(L"LOAD failed: " + printed(Value(std::wstring_view(fileName)), Style::readable));
  std::ifstream file(std::filesystem::path(toUtf8(*path)), std::ios::binary);
  std::ostringstream source;
  source << file.rdbuf();
  if (!file) fail(L"LOAD failed: " + printed(Value(std::wstring_view(*path)), Style::readable));
  std::string bytes = source.str();
  if (!isValidUtf8(bytes)) bytes = services_.decodeSource(std::move(bytes), *path);
  return evalSource(bytes, *path);
}

Value Interpreter::call(const Value& function, Arguments args) {
  return apply(*functionOf(function).function(), args);
}

Value Interpreter::call(std::wstring_view name, Arguments args) { return call(Value(intern(name)), args); }

Value Interpreter::apply(const Function& function, Arguments args) {
  step();
  if (function.native) return callNative(function, args);
  Frame frame(*this, args.size());
  for (const Value& arg : args) frame.add(arg);
  return callLambda(function, frame.values());
}

void Interpreter::failCount(bool tooFew) { fail(tooFew ? L"too few arguments" : L"too many arguments"); }

void Interpreter::endNative(const Function& function) {
  try {
    throw;
  } catch (LispError& error) {
    // The program's handler must see the variables as they were where the error happened.
    tellProgram(error, &function);
    throw;
  } catch (const std::bad_alloc&) {
    fail(L"insufficient memory");
  } catch (const std::length_error&) {
    fail(L"insufficient memory");
  }
}

namespace {

/// Variables and what stands on the stack for them change places, and change back at the end, also when an
/// error passes.
class Binding {
 public:
  Binding(const std::vector<Symbol*>& variables, Value* values) : variables_(variables), values_(values) {
    for (size_t i = 0; i < variables_.size(); ++i) exchange(i);
  }
  ~Binding() {
    for (size_t i = variables_.size(); i-- > 0;) exchange(i);
  }
  Binding(const Binding&) = delete;
  Binding& operator=(const Binding&) = delete;

 private:
  void exchange(size_t i) { swap(variables_[i]->value, values_[i]); }
  const std::vector<Symbol*>& variables_;
  Value* const values_;
};

}  // namespace

Value Interpreter::callLambda(const Function& function, std::span<Value> args) {
  const Lambda& lambda = *function.lambda;
  const Running running(*this, &function, nullptr);
  if (args.size() != lambda.parameters.size()) failCount(args.size() < lambda.parameters.size());
  const Binding parameters(lambda.parameters, args.data());
  if (lambda.locals.empty()) return runAll(lambda.body, *this);
  Frame frame(*this, lambda.locals.size());
  for (size_t i = 0; i < lambda.locals.size(); ++i) frame.add(Value());
  const Binding locals(lambda.locals, frame.values().data());
  return runAll(lambda.body, *this);
}

Value Interpreter::functionOf(const Value& value) {
  const Value* at = &value;
  // A symbol stands for its value; a chain of symbols ends where one names itself.
  for (int hops = 0; at->isSymbol() && hops < 8; ++hops) {
    const Symbol& symbol = *at->symbol();
    if (symbol.value.isNil()) fail(L"no function definition: " + symbol.name);
    at = &symbol.value;
  }
  if (at->isFunction()) return *at;
  if (at->isCons()) return compiledLambda(*at);
  fail(L"bad function: " + printed(*at, Style::readable));
}

Value Interpreter::compiledLambda(const Value& list) {
  const Cons* const key = &list.cons();
  if (const auto found = lambdas_.find(key); found != lambdas_.end()) return found->second.second;
  // `(lambda (x) …)`, or what `defun-q` leaves: `((x) …)`.
  const bool named = car(list).isSymbol() && car(list).symbol() == lambdaSymbol_;
  if (!named && !car(list).isList()) fail(L"bad function: " + printed(list, Style::readable));
  const Value function = makeFunction(L"-lambda-", compileLambda(named ? cdr(list) : list, *this));
  if (lambdas_.size() >= keptLambdas) lambdas_.clear();
  lambdas_.emplace(key, std::pair(list, function));
  return function;
}

void Interpreter::fail(std::wstring message) {
  LispError error(std::move(message));
  tellProgram(error);
  throw error;
}

std::wstring LispError::report() const {
  std::wstring text = L"; error: " + message;
  for (const std::wstring& each : callers) text += L"\n;   in " + each;
  return text;
}

void Interpreter::noteCallers(LispError& error, const Function* native) const {
  constexpr int mostFunctions = 10;  // between one source text and the next
  if (!error.callers.empty()) return;
  if (native) error.callers.push_back(native->name);
  int functions = 0;
  const auto tellOthers = [&] {
    if (functions > mostFunctions) {
      error.callers.push_back(std::to_wstring(functions - mostFunctions) + L" others");
    }
    functions = 0;
  };
  for (const Running* each = running_; each; each = each->outer) {
    if (each->function) {
      if (++functions <= mostFunctions) error.callers.push_back(each->function->name);
    } else if (!each->source->fileName().empty()) {
      tellOthers();
      error.callers.push_back(each->source->fileName() + L", line " +
                              std::to_wstring(each->source->formLine()));
    }
  }
  tellOthers();
}

void Interpreter::tellProgram(LispError& error, const Function* native) {
  if (error.handled || catching_ > 0 || tellingProgram_) return;
  const Value handler = errorHandler_->value;
  if (handler.isNil()) return noteCallers(error, native);
  error.handled = true;
  tellingProgram_ = true;
  struct Leave {
    bool& telling;
    ~Leave() { telling = false; }
  } leave{tellingProgram_};
  const Value message{std::wstring_view(error.message)};
  try {
    call(handler, Arguments(&message, 1));
  } catch (const LispError&) {
    // An error inside the handler ends the handler alone.
  }
}

void Interpreter::slowStep() {
  switch (wantedEnd_.exchange(End::none)) {
    case End::cancelled:
      fail(L"Function cancelled");
    case End::memory:
      fail(L"insufficient memory");
    case End::none:
      break;
  }
  if (stepsLeft_ > 0 && --stepsLeft_ == 0) {
    stepsLeft_ = 1;  // further steps, as of a handler, end as well
    throw LispError(L"step limit reached");
  }
}

void Interpreter::throwTooDeep() {
  LispError error(L"internal stack limit reached (simulated)");
  noteCallers(error, nullptr);
  throw error;
}

}  // namespace lisp
