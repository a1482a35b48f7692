#include "host/script/dialog_values.h"

#include "host/lisp/printer.h"

namespace host {

namespace {

using lisp::Call;
using lisp::Value;
using platform::ScriptValue;

ScriptValue readArgument(const Value& value) {
  if (value.isText()) return value.text();
  if (value.isInteger()) return value.integer();
  return value.isTrue();
}

struct ToLisp {
  const Call& call;

  Value operator()(bool flag) const { return call.lisp.truth(flag); }
  Value operator()(int number) const { return Value(int32_t{number}); }
  Value operator()(const std::wstring& text) const { return Value(std::wstring_view(text)); }
  Value operator()(const platform::ScriptList& values) const {
    lisp::ListBuilder list;
    for (const ScriptValue& each : values) list.add(std::visit(*this, each));
    return list.take();
  }
};

}  // namespace

platform::ScriptAction readAction(const Call& call, const Value& value) {
  if (!value.isCons() || !lisp::car(value).isText())
    call.lisp.fail(L"no action of a dialog: " + lisp::printed(value, lisp::Style::readable));
  platform::ScriptAction action{lisp::car(value).text(), {}};
  for (Value rest = lisp::cdr(value); rest.isCons(); rest = lisp::cdr(rest)) {
    action.arguments.push_back(readArgument(lisp::car(rest)));
  }
  const std::wstring problem = platform::problemOf(action);
  if (!problem.empty()) call.lisp.fail(problem);
  return action;
}

Value toLisp(const Call& call, const platform::ScriptList& values) { return ToLisp{call}(values); }

}  // namespace host
