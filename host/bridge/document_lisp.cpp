#include "host/bridge/document_lisp.h"

#include <iostream>

#include "brx/lisp_calls.h"
#include "host/bridge/source_text.h"
#include "host/bridge/values.h"
#include "host/calls/served_call.h"
#include "host/console/command_line.h"
#include "host/documents/documents.h"
#include "host/documents/variables.h"
#include "host/rx/modules.h"
#include "platform/text/utf.h"

namespace host {
namespace {

using lisp::Value;

/// What `toBuffers` refuses becomes an error where the function was called.
resbuf* checkedArguments(const lisp::Call& call) {
  try {
    return toBuffers(call.args);
  } catch (const lisp::LispError& error) {
    call.lisp.fail(error.message);
  }
}

/// A call of a module's function, as the module sees it. The arguments are converted before the module
/// runs, so that what can't be converted is the caller's error and not the module's.
class BridgedCall : public ServedCall {
 public:
  explicit BridgedCall(const lisp::Call& call) : call_(call), arguments_(checkedArguments(call)) {}
  ~BridgedCall() override {
    if (arguments_) acutRelRb(arguments_);
  }
  int functionCode() const override { return call_.function.code; }
  resbuf* arguments() const override {
    return arguments_ ? std::exchange(arguments_, nullptr) : toBuffers(call_.args);
  }
  void setResult(const resbuf* value) override { result_ = takeValue(value, call_.lisp.t()); }
  void setListResult(const resbuf* values) override { result_ = toList(values, call_.lisp.t()); }
  DocumentLisp* lisp() const override { return &InterpreterOfDocument::of(call_.lisp); }
  Value takeResult() { return std::move(result_); }

 private:
  const lisp::Call& call_;
  mutable resbuf* arguments_;
  Value result_;
};

int callModule(Application& application, int code) {
  const auto place = static_cast<size_t>(code);
  const auto entry = place < application.functions.size() ? application.functions[place] : nullptr;
  return modules().call(application, [&] {
    // A function without an entry of its own is asked of the application's entry.
    return entry ? entry() : application.entry(AcRx::kInvkSubrMsg, &application);
  });
}

/// All functions that modules define lead here.
Value callExternal(const lisp::Call& call) {
  auto& application = *static_cast<Application*>(call.function.context);
  if (!application.isLoaded()) call.lisp.fail(L"no function definition: " + call.function.name);
  BridgedCall served(call);
  bool succeeded = false;
  try {
    const ServingGuard guard(served);
    succeeded = callModule(application, call.function.code) != RSERR;
  } catch (...) {
    call.lisp.fail(L"exception in " + call.function.name);
  }
  if (!succeeded) call.lisp.fail(L"ADS request error");
  return served.takeResult();
}

struct ToValue {
  Value operator()(int value) const { return Value(int32_t{value}); }
  Value operator()(double value) const { return Value(value); }
  Value operator()(const std::wstring& value) const { return Value(std::wstring_view(value)); }
  Value operator()(const Point& value) const {
    lisp::ListBuilder list;
    for (const double each : {value.x, value.y, value.z}) list.add(Value(each));
    return list.take();
  }
};

std::optional<VariableValue> toVariable(const Value& value) {
  if (value.isInteger()) return int{value.integer()};
  if (value.isReal()) return value.real();
  if (value.isText()) return value.text();
  double numbers[3] = {};
  size_t count = 0;
  for (const Value& each : lisp::Elements(value)) {
    if (count == 3 || !each.isNumber()) return std::nullopt;
    numbers[count++] = each.number();
  }
  if (count < 2) return std::nullopt;
  return Point{numbers[0], numbers[1], numbers[2]};
}

}  // namespace

InterpreterOfDocument::InterpreterOfDocument() : interpreter_(*this) {}
InterpreterOfDocument::~InterpreterOfDocument() = default;

InterpreterOfDocument& InterpreterOfDocument::of(lisp::Interpreter& interpreter) {
  return static_cast<InterpreterOfDocument&>(interpreter.services());
}

void InterpreterOfDocument::define(const std::wstring& name, Application& application, int code) {
  interpreter_.define(name, callExternal, 0, lisp::anyCount, &application, code);
  defined_.push_back({name, &application, code});
}

void InterpreterOfDocument::undefineName(const Defined& defined) {
  const lisp::Symbol* const symbol = interpreter_.find(defined.name);
  if (!symbol || !symbol->value.isFunction()) return;
  const lisp::Function& function = *symbol->value.function();
  if (function.context == defined.application && function.code == defined.code) {
    interpreter_.undefine(defined.name);
  }
}

void InterpreterOfDocument::undefine(const std::wstring& name, Application& application, int code) {
  undefineName({name, &application, code});
}

void InterpreterOfDocument::forget(Application& application) {
  for (const Defined& each : defined_) {
    if (each.application == &application) undefineName(each);
  }
  std::erase_if(defined_, [&](const Defined& each) { return each.application == &application; });
}

bool InterpreterOfDocument::invoke(const resbuf& call, resbuf*& result) {
  try {
    std::vector<Value> values;
    for (const resbuf* at = call.rbnext; at;) values.push_back(takeValue(at, interpreter_.t()));
    const Value answer = interpreter_.catching(
        [&] { return interpreter_.call(std::wstring_view(call.resval.rstring), values); });
    result = toBuffers({&answer, 1});
    return true;
  } catch (const lisp::LispError&) {
    return false;
  }
}

void InterpreterOfDocument::print(std::wstring_view text) { commandLine().print(text); }

void InterpreterOfDocument::alert(const std::wstring& message) { acedAlert(message.c_str()); }

std::optional<std::wstring> InterpreterOfDocument::readLine() {
  std::string line;
  if (!std::getline(std::cin, line)) return std::nullopt;
  return fromUtf8(line);
}

std::optional<Value> InterpreterOfDocument::variable(const std::wstring& name) {
  const auto value = getVariable(name);
  if (!value) return std::nullopt;
  return std::visit(ToValue{}, *value);
}

bool InterpreterOfDocument::setVariable(const std::wstring& name, const Value& value) {
  const auto variable = toVariable(value);
  return variable && host::setVariable(name, *variable) == SetVariable::done;
}

std::string InterpreterOfDocument::decodeSource(std::string bytes, const std::wstring& fileName) {
  return sourceAsUtf8(std::move(bytes), fileName);
}

std::optional<std::wstring> InterpreterOfDocument::findFile(const std::wstring& name) {
  std::wstring found = findSupportFile(name);
  if (found.empty()) return std::nullopt;
  return found;
}

lisp::Interpreter& currentInterpreter() {
  return static_cast<InterpreterOfDocument*>(documents().lisp())->interpreter();
}

}  // namespace host
