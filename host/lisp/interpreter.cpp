#include "host/lisp/interpreter.h"

#include <sys/resource.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "host/lisp/builtins.h"
#include "host/lisp/code.h"
#include "host/lisp/printer.h"
#include "host/lisp/reader.h"
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
  rlimit limit{};
  size_t size = size_t{8} << 20;
  if (getrlimit(RLIMIT_STACK, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY) size = limit.rlim_cur;
  return here - (std::min(size, mostStack) - reservedStack);
}

}  // namespace

Interpreter::Interpreter(Services& services) : services_(services), lowestStack_(lowestUsableStack()) {
  stack_.reserve(stackValues);
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
  checkDepth();
  if (function.native) return callNative(function, args);
  Frame frame(*this);
  for (const Value& arg : args) push(arg);
  return callLambda(function, frame);
}

Value Interpreter::applyFrame(const Function& function, Frame& frame) {
  if (function.native) return callNative(function, frame.values());
  return callLambda(function, frame);
}

Value Interpreter::callNative(const Function& function, Arguments args) {
  const int count = static_cast<int>(args.size());
  if (count < function.fewest) fail(L"too few arguments");
  if (count > function.most) fail(L"too many arguments");
  try {
    return function.native(Call{*this, args, function});
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

Value Interpreter::callLambda(const Function& function, Frame& frame) {
  const Lambda& lambda = *function.lambda;
  const Value kept(const_cast<Function*>(&function));  // a function may redefine itself while it runs
  const Running running(*this, &function, nullptr);
  const size_t parameters = lambda.parameters.size();
  const size_t count = frame.values().size();
  if (count < parameters) fail(L"too few arguments");
  if (count > parameters) fail(L"too many arguments");
  for (size_t i = 0; i < lambda.locals.size(); ++i) push(Value());

  // Values and what they hide change places, and change back at the end, also when an error passes.
  struct Binding {
    Interpreter& lisp;
    const Lambda& lambda;
    size_t base;
    void exchange(size_t i) {
      Symbol* const symbol =
          i < lambda.parameters.size() ? lambda.parameters[i] : lambda.locals[i - lambda.parameters.size()];
      std::swap(symbol->value, *lisp.stackAt(base + i));
    }
    size_t count() const { return lambda.parameters.size() + lambda.locals.size(); }
    Binding(Interpreter& lisp, const Lambda& lambda, size_t base) : lisp(lisp), lambda(lambda), base(base) {
      for (size_t i = 0; i < count(); ++i) exchange(i);
    }
    ~Binding() {
      for (size_t i = count(); i-- > 0;) exchange(i);
    }
  } binding(*this, lambda, frame.base);
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
  if (at->isFunction()) {
    if (at->function()->kind == Function::Kind::specialForm) fail(L"bad function: " + at->function()->name);
    return *at;
  }
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
  End wanted = wantedEnd_.exchange(End::none);
  if (wanted == End::look) {
    if (look_) look_();
    wanted = wantedEnd_.exchange(End::none);
  }
  switch (wanted) {
    case End::cancelled:
      fail(L"Function cancelled");
    case End::memory:
      fail(L"insufficient memory");
    case End::look:
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
