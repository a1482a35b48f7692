#include "host/lisp/builtins.h"
#include "host/lisp/code.h"
#include "host/lisp/printer.h"

namespace lisp {
namespace {

Value eval(const Call& call) { return call.lisp.eval(call[0]); }

Value set(const Call& call) {
  Symbol* const symbol = call.symbol(0);
  if (symbol->constant) throw LispError(L"bad argument type: symbol is protected: " + symbol->name);
  symbol->value = call[1];
  return call[1];
}

Value boundp(const Call& call) {
  return call.lisp.truth(call[0].isSymbol() && call[0].symbol()->value.isTrue());
}

const wchar_t* typeName(const Value& value) {
  switch (value.type()) {
    case Type::nil:
      return nullptr;
    case Type::integer:
      return L"INT";
    case Type::real:
      return L"REAL";
    case Type::symbol:
      return L"SYM";
    case Type::entity:
      return L"ENAME";
    case Type::text:
      return L"STR";
    case Type::cons:
      return L"LIST";
    case Type::opaque:
      return value.opaque()->typeName().data();
    case Type::function:
      break;
  }
  switch (value.function()->kind) {
    case Function::Kind::usubr:
      return L"USUBR";
    case Function::Kind::external:
      return L"EXRXSUBR";
    default:
      return L"SUBR";
  }
}

Value type(const Call& call) {
  const wchar_t* const name = typeName(call[0]);
  return name ? Value(call.lisp.intern(name)) : Value();
}

Value exitNow(const Call&) { throw LispExit(); }
Value exitWithValue(const Call& call) { throw LispExit(call[0]); }

/// What `vl-catch-all-apply` gives for an error.
struct CaughtError : Opaque {
  explicit CaughtError(std::wstring message) : message(std::move(message)) {}
  std::wstring_view typeName() const override { return L"VL-CATCH-ALL-APPLY-ERROR"; }
  std::wstring print() const override { return L"#<%catch-all-apply-error%>"; }
  std::wstring message;
};

const CaughtError* caughtError(const Value& value) {
  return value.type() == Type::opaque ? dynamic_cast<const CaughtError*>(value.opaque()) : nullptr;
}

Value catchAllApply(const Call& call) {
  try {
    return call.lisp.catching([&] {
      const std::vector<Value> args = call.has(1) ? elementsOf(call.list(1)) : std::vector<Value>();
      return call.lisp.call(call[0], args);
    });
  } catch (const LispError& error) {
    return Value(new CaughtError(error.message));
  }
}

Value isCaughtError(const Call& call) { return call.lisp.truth(caughtError(call[0]) != nullptr); }

Value caughtMessage(const Call& call) {
  const CaughtError* const error = caughtError(call[0]);
  if (!error) failType(L"VL-CATCH-ALL-APPLY-ERROR", call[0]);
  return Value(std::wstring_view(error->message));
}

Value symbolName(const Call& call) { return Value(std::wstring_view(call.symbol(0)->name)); }
Value symbolValue(const Call& call) { return call.symbol(0)->value; }
Value symbolp(const Call& call) { return call.lisp.truth(call[0].isSymbol()); }

Value getvar(const Call& call) {
  const std::wstring name = call[0].isSymbol() ? call[0].symbol()->name : call.text(0);
  return call.lisp.services().variable(name).value_or(Value());
}

Value setvar(const Call& call) {
  const std::wstring name = call[0].isSymbol() ? call[0].symbol()->name : call.text(0);
  if (!call.lisp.services().setVariable(name, call[1])) {
    throw LispError(L"AutoCAD variable setting rejected: " +
                    printed(Value(std::wstring_view(name)), Style::readable) + L" " +
                    printed(call[1], Style::readable));
  }
  return call[1];
}

Value alert(const Call& call) {
  call.lisp.services().alert(call.text(0));
  return {};
}

Value getEnvironment(const Call& call) {
  const auto value = call.lisp.services().environment(call.text(0));
  return value ? Value(std::wstring_view(*value)) : Value();
}

Value setEnvironment(const Call& call) {
  call.lisp.services().setEnvironment(call.text(0), call.text(1));
  return call[1];
}

// Format 0 gives symbols, any other texts.
Value atomsFamily(const Call& call) {
  const bool symbols = call.integer(0) == 0;
  const auto named = [&](const Symbol& symbol) {
    return symbols ? Value(const_cast<Symbol*>(&symbol)) : Value(std::wstring_view(symbol.name));
  };
  ListBuilder list;
  if (call.has(1) && call[1].isTrue()) {
    for (const Value& name : Elements(call.list(1))) {
      const Symbol* const symbol = name.isText() ? call.lisp.find(name.text()) : nullptr;
      list.add(symbol && symbol->value.isTrue() ? named(*symbol) : Value());
    }
    return list.take();
  }
  for (const Symbol* symbol : call.lisp.symbols()) {
    if (symbol->value.isTrue()) list.add(named(*symbol));
  }
  return list.take();
}

Value version(const Call&) { return Value(std::wstring_view(L"Zarbo host LISP 1.0")); }
Value loadNothing(const Call&) { return {}; }

Value load(const Call& call) {
  if (!call.has(1)) return call.lisp.load(call.text(0));
  if (!call.lisp.services().findFile(call.text(0)) &&
      !call.lisp.services().findFile(call.text(0) + L".lsp")) {
    return call[1].isCons() || call[1].isFunction() ? call.lisp.call(call[1], {}) : call[1];
  }
  return call.lisp.load(call.text(0));
}

const Value& functionList(const Value& symbol) {
  static const Value nil;
  const Value& value = symbol.symbol()->value;
  if (value.isCons()) return value;
  return value.isFunction() && value.function()->lambda ? value.function()->lambda->source : nil;
}

Value defunQListRef(const Call& call) {
  call.symbol(0);
  return functionList(call[0]);
}

Value defunQListSet(const Call& call) {
  call.symbol(0)->value = call.list(1);
  return call[0];
}

}  // namespace

std::span<const Builtin> controlBuiltins() {
  static const Builtin table[] = {
      {L"EVAL", eval, 1, 1},
      {L"SET", set, 2, 2},
      {L"BOUNDP", boundp, 1, 1},
      {L"TYPE", type, 1, 1},
      {L"EXIT", exitNow, 0, 0},
      {L"QUIT", exitNow, 0, 0},
      {L"VL-EXIT-WITH-VALUE", exitWithValue, 1, 1},
      {L"VL-EXIT-WITH-ERROR", [](const Call& call) -> Value { throw LispError(call.text(0)); }, 1, 1},
      {L"VL-CATCH-ALL-APPLY", catchAllApply, 1, 2},
      {L"VL-CATCH-ALL-ERROR-P", isCaughtError, 1, 1},
      {L"VL-CATCH-ALL-ERROR-MESSAGE", caughtMessage, 1, 1},
      {L"VL-SYMBOL-NAME", symbolName, 1, 1},
      {L"VL-SYMBOL-VALUE", symbolValue, 1, 1},
      {L"VL-SYMBOLP", symbolp, 1, 1},
      {L"GETVAR", getvar, 1, 1},
      {L"SETVAR", setvar, 2, 2},
      {L"ALERT", alert, 1, 1},
      {L"GETENV", getEnvironment, 1, 1},
      {L"SETENV", setEnvironment, 2, 2},
      {L"ATOMS-FAMILY", atomsFamily, 1, 2},
      {L"VER", version, 0, 0},
      {L"VL-LOAD-COM", loadNothing, 0, 0},
      {L"VL-LOAD-REACTORS", loadNothing, 0, 0},
      {L"GC", loadNothing, 0, 0},
      {L"LOAD", load, 1, 2},
      {L"DEFUN-Q-LIST-REF", defunQListRef, 1, 1},
      {L"DEFUN-Q-LIST-SET", defunQListSet, 2, 2},
  };
  return table;
}

}  // namespace lisp
