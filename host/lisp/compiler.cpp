#include <array>

#include "host/lisp/code.h"
#include "host/lisp/printer.h"

namespace lisp {
namespace {

struct Constant : Code {
  explicit Constant(Value value) : value(std::move(value)) {}
  Value run(Interpreter&) const override { return value; }
  Value value;
};

struct Variable : Code {
  explicit Variable(Symbol* symbol) : symbol(symbol) {}
  Value run(Interpreter&) const override { return symbol->value; }
  Symbol* symbol;
};

struct NamedCall : Code {
  Symbol* symbol;
  CodeList args;

  /// Looked up after the arguments, which may define it.
  Value function(Interpreter& lisp) const {
    return symbol->value.isFunction() ? symbol->value : lisp.functionOf(Value(symbol));
  }
};

struct LongCall : NamedCall {
  Value run(Interpreter& lisp) const override {
    lisp.step();
    Interpreter::Frame frame(lisp, args.size());
    for (const CodePtr& arg : args) frame.addResult(*arg);
    return lisp.applyInPlace(*function(lisp).function(), frame.values());
  }
};

/// Nearly all calls are short. Their arguments need no room on the value stack.
template <size_t... places>
struct ShortCall : NamedCall {
  Value run(Interpreter& lisp) const override {
    lisp.step();
    std::array<Value, sizeof...(places)> values{args[places]->run(lisp)...};
    return lisp.applyInPlace(*function(lisp).function(), values);
  }
};

std::unique_ptr<NamedCall> makeNamedCall(size_t args) {
  switch (args) {
    case 0:
      return std::make_unique<ShortCall<>>();
    case 1:
      return std::make_unique<ShortCall<0>>();
    case 2:
      return std::make_unique<ShortCall<0, 1>>();
    case 3:
      return std::make_unique<ShortCall<0, 1, 2>>();
    default:
      return std::make_unique<LongCall>();
  }
}

struct ComputedCall : Code {
  Value run(Interpreter& lisp) const override {
    lisp.step();
    const Value function = lisp.functionOf(head->run(lisp));
    Interpreter::Frame frame(lisp, args.size());
    for (const CodePtr& arg : args) frame.addResult(*arg);
    return lisp.applyInPlace(*function.function(), frame.values());
  }
  CodePtr head;
  CodeList args;
};

/// What is wrong with a form is told when the form is reached, not when its function is defined.
struct Failure : Code {
  explicit Failure(std::wstring message) : message(std::move(message)) {}
  Value run(Interpreter& lisp) const override { lisp.fail(message); }
  std::wstring message;
};

bool isProperList(const Value& list) {
  const Value* at = &list;
  while (at->isCons()) at = &cdr(*at);
  return at->isNil();
}

CodePtr compileCall(const Value& form, Interpreter& lisp) {
  if (!isProperList(form)) {
    return std::make_unique<Failure>(L"bad argument type: listp " + printed(cdr(form), Style::readable));
  }
  const Value& head = car(form);
  if (head.isSymbol()) {
    if (const SpecialForm special = specialForm(*head.symbol())) {
      try {
        return special(cdr(form), lisp);
      } catch (const LispError& error) {
        return std::make_unique<Failure>(error.message);
      }
    }
    CodeList args = compileAll(cdr(form), lisp);
    auto call = makeNamedCall(args.size());
    call->symbol = head.symbol();
    call->args = std::move(args);
    return call;
  }
  if (!head.isCons() && !head.isFunction()) {
    return std::make_unique<Failure>(L"bad function: " + printed(head, Style::readable));
  }
  auto call = std::make_unique<ComputedCall>();
  call->head = compile(head, lisp);
  call->args = compileAll(cdr(form), lisp);
  return call;
}

}  // namespace

CodePtr compile(const Value& form, Interpreter& lisp) {
  lisp.checkDepth();
  if (form.isSymbol()) return std::make_unique<Variable>(form.symbol());
  if (form.isCons()) return compileCall(form, lisp);
  return std::make_unique<Constant>(form);
}

CodeList compileAll(const Value& forms, Interpreter& lisp) {
  CodeList list;
  for (const Value& form : Elements(forms)) list.push_back(compile(form, lisp));
  return list;
}

std::unique_ptr<Lambda> compileLambda(const Value& source, Interpreter& lisp) {
  auto made = std::make_unique<Lambda>();
  made->source = source;
  if (!source.isCons() || !car(source).isList()) throw LispError(L"syntax error");
  std::vector<Symbol*>* names = &made->parameters;
  for (const Value& name : Elements(car(source))) {
    if (!name.isSymbol()) throw LispError(L"syntax error");
    if (name.symbol()->name == L"/") {
      names = &made->locals;
    } else {
      names->push_back(name.symbol());
    }
  }
  made->body = compileAll(cdr(source), lisp);
  return made;
}

Value makeFunction(std::wstring name, std::unique_ptr<Lambda> lambda) {
  auto* made = new Function;
  made->kind = Function::Kind::usubr;
  made->name = std::move(name);
  made->lambda = std::move(lambda);
  return Value(made);
}

}  // namespace lisp
