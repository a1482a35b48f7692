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
  Value run(Interpreter& lisp) const override {
    lisp.step();
    lisp.checkDepth();
    Interpreter::Frame frame(lisp);
    for (const CodePtr& arg : args) lisp.push(arg->run(lisp));
    // Looked up after the arguments, which may define it.
    const Value function = symbol->value;
    if (function.isFunction()) return lisp.applyFrame(*function.function(), frame);
    if (function.isNil()) lisp.fail(L"no function definition: " + symbol->name);
    return lisp.applyFrame(*lisp.functionOf(function).function(), frame);
  }
  Symbol* symbol;
  CodeList args;
};

struct ComputedCall : Code {
  Value run(Interpreter& lisp) const override {
    lisp.step();
    lisp.checkDepth();
    const Value function = lisp.functionOf(head->run(lisp));
    Interpreter::Frame frame(lisp);
    for (const CodePtr& arg : args) lisp.push(arg->run(lisp));
    return lisp.applyFrame(*function.function(), frame);
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
    auto call = std::make_unique<NamedCall>();
    call->symbol = head.symbol();
    call->args = compileAll(cdr(form), lisp);
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

Value runAll(const CodeList& body, Interpreter& lisp) {
  if (body.empty()) return {};
  for (size_t i = 0; i + 1 < body.size(); ++i) body[i]->run(lisp);
  return body.back()->run(lisp);
}

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
