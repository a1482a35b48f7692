#include <unordered_map>

#include "host/lisp/code.h"
#include "host/lisp/printer.h"

namespace lisp {
namespace {

bool isTrue(const CodePtr& code, Interpreter& lisp) { return code->run(lisp).isTrue(); }

// What is wrong with a form is found when it is compiled, and told when it is reached.
[[noreturn]] void failSyntax() { throw LispError(L"syntax error"); }

const Value& nth(const Value& list, size_t place) {
  static const Value nil;
  const Value* at = &list;
  while (place-- > 0 && at->isCons()) at = &cdr(*at);
  return at->isCons() ? car(*at) : nil;
}

Symbol* symbolAt(const Value& args, size_t place) {
  const Value& name = nth(args, place);
  if (!name.isSymbol()) failSyntax();
  return name.symbol();
}

struct Quote : Code {
  Value run(Interpreter&) const override { return value; }
  Value value;
};

CodePtr compileQuote(const Value& args, Interpreter&) {
  if (lengthOf(args) != 1) failSyntax();
  auto code = std::make_unique<Quote>();
  code->value = car(args);
  return code;
}

struct If : Code {
  Value run(Interpreter& lisp) const override {
    if (isTrue(test, lisp)) return then->run(lisp);
    return otherwise ? otherwise->run(lisp) : Value();
  }
  CodePtr test, then, otherwise;
};

CodePtr compileIf(const Value& args, Interpreter& lisp) {
  const size_t length = lengthOf(args);
  if (length < 2) throw LispError(L"too few arguments");
  if (length > 3) throw LispError(L"too many arguments");
  auto code = std::make_unique<If>();
  code->test = compile(nth(args, 0), lisp);
  code->then = compile(nth(args, 1), lisp);
  if (length == 3) code->otherwise = compile(nth(args, 2), lisp);
  return code;
}

struct Cond : Code {
  struct Clause {
    CodePtr test;
    CodeList body;
  };
  Value run(Interpreter& lisp) const override {
    for (const Clause& clause : clauses) {
      Value value = clause.test->run(lisp);
      if (value.isNil()) continue;
      return clause.body.empty() ? value : runAll(clause.body, lisp);
    }
    return {};
  }
  std::vector<Clause> clauses;
};

CodePtr compileCond(const Value& args, Interpreter& lisp) {
  auto code = std::make_unique<Cond>();
  for (const Value& clause : Elements(args)) {
    if (!clause.isCons()) failSyntax();
    code->clauses.push_back({compile(car(clause), lisp), compileAll(cdr(clause), lisp)});
  }
  return code;
}

struct And : Code {
  Value run(Interpreter& lisp) const override {
    for (const CodePtr& each : parts) {
      if (!isTrue(each, lisp)) return {};
    }
    return lisp.t();
  }
  CodeList parts;
};

struct Or : Code {
  Value run(Interpreter& lisp) const override {
    for (const CodePtr& each : parts) {
      if (isTrue(each, lisp)) return lisp.t();
    }
    return {};
  }
  CodeList parts;
};

struct Progn : Code {
  Value run(Interpreter& lisp) const override { return runAll(parts, lisp); }
  CodeList parts;
};

template <class Parts>
CodePtr compileParts(const Value& args, Interpreter& lisp) {
  auto code = std::make_unique<Parts>();
  code->parts = compileAll(args, lisp);
  return code;
}

struct While : Code {
  Value run(Interpreter& lisp) const override {
    Value last;
    while (isTrue(test, lisp)) {
      lisp.step();
      last = runAll(body, lisp);
    }
    return last;
  }
  CodePtr test;
  CodeList body;
};

CodePtr compileWhile(const Value& args, Interpreter& lisp) {
  if (args.isNil()) throw LispError(L"too few arguments");
  auto code = std::make_unique<While>();
  code->test = compile(car(args), lisp);
  code->body = compileAll(cdr(args), lisp);
  return code;
}

struct Repeat : Code {
  Value run(Interpreter& lisp) const override {
    const Value times = count->run(lisp);
    if (!times.isInteger()) lisp.fail(L"bad argument type: fixnump: " + printed(times, Style::readable));
    Value last;
    for (int32_t i = 0; i < times.integer(); ++i) {
      lisp.step();
      last = runAll(body, lisp);
    }
    return last;
  }
  CodePtr count;
  CodeList body;
};

CodePtr compileRepeat(const Value& args, Interpreter& lisp) {
  if (args.isNil()) throw LispError(L"too few arguments");
  auto code = std::make_unique<Repeat>();
  code->count = compile(car(args), lisp);
  code->body = compileAll(cdr(args), lisp);
  return code;
}

struct Foreach : Code {
  Value run(Interpreter& lisp) const override {
    const Value items = list->run(lisp);
    if (!items.isList()) lisp.fail(L"bad argument type: listp " + printed(items, Style::readable));
    struct Restore {
      Symbol* symbol;
      Value former;
      ~Restore() { symbol->value = std::move(former); }
    } restore{symbol, symbol->value};
    Value last;
    for (const Value& item : Elements(items)) {
      lisp.step();
      symbol->value = item;
      last = runAll(body, lisp);
    }
    return last;
  }
  Symbol* symbol;
  CodePtr list;
  CodeList body;
};

CodePtr compileForeach(const Value& args, Interpreter& lisp) {
  if (lengthOf(args) < 2) throw LispError(L"too few arguments");
  auto code = std::make_unique<Foreach>();
  code->symbol = symbolAt(args, 0);
  if (code->symbol->constant) failSyntax();
  code->list = compile(nth(args, 1), lisp);
  code->body = compileAll(cdr(cdr(args)), lisp);
  return code;
}

struct Setq : Code {
  Value run(Interpreter& lisp) const override {
    Value last;
    for (const auto& [symbol, value] : pairs) {
      last = value->run(lisp);
      symbol->value = last;
    }
    return last;
  }
  std::vector<std::pair<Symbol*, CodePtr>> pairs;
};

CodePtr compileSetq(const Value& args, Interpreter& lisp) {
  const size_t length = lengthOf(args);
  if (length % 2 != 0) throw LispError(L"syntax error");
  auto code = std::make_unique<Setq>();
  for (const Value* at = &args; at->isCons(); at = &cdr(cdr(*at))) {
    Symbol* const symbol = symbolAt(*at, 0);
    if (symbol->constant) throw LispError(L"bad argument type: symbol is protected: " + symbol->name);
    code->pairs.emplace_back(symbol, compile(nth(*at, 1), lisp));
  }
  return code;
}

/// `defun` keeps the function, `defun-q` its list.
struct Define : Code {
  Value run(Interpreter&) const override {
    symbol->value = value;
    return Value(symbol);
  }
  Symbol* symbol;
  Value value;
};

CodePtr compileDefun(const Value& args, Interpreter& lisp) {
  if (lengthOf(args) < 2) throw LispError(L"too few arguments");
  auto code = std::make_unique<Define>();
  code->symbol = symbolAt(args, 0);
  code->value = makeFunction(code->symbol->name, compileLambda(cdr(args), lisp));
  return code;
}

CodePtr compileDefunQ(const Value& args, Interpreter& lisp) {
  if (lengthOf(args) < 2) throw LispError(L"too few arguments");
  auto code = std::make_unique<Define>();
  code->symbol = symbolAt(args, 0);
  compileLambda(cdr(args), lisp);
  code->value = cdr(args);
  return code;
}

CodePtr compileLambdaForm(const Value& args, Interpreter& lisp) {
  auto code = std::make_unique<Quote>();
  code->value = makeFunction(L"-lambda-", compileLambda(args, lisp));
  return code;
}

/// Like `quote`, but a lambda list becomes a function at once.
CodePtr compileFunction(const Value& args, Interpreter& lisp) {
  if (lengthOf(args) != 1) failSyntax();
  const Value& quoted = car(args);
  if (quoted.isCons() && car(quoted).isSymbol() && car(quoted).symbol()->name == L"LAMBDA") {
    return compileLambdaForm(cdr(quoted), lisp);
  }
  return compileQuote(args, lisp);
}

const std::unordered_map<std::wstring, SpecialForm>& forms() {
  static const std::unordered_map<std::wstring, SpecialForm> table = {
      {L"QUOTE", compileQuote},        {L"FUNCTION", compileFunction}, {L"IF", compileIf},
      {L"COND", compileCond},          {L"AND", compileParts<And>},    {L"OR", compileParts<Or>},
      {L"PROGN", compileParts<Progn>}, {L"WHILE", compileWhile},       {L"REPEAT", compileRepeat},
      {L"FOREACH", compileForeach},    {L"SETQ", compileSetq},         {L"DEFUN", compileDefun},
      {L"DEFUN-Q", compileDefunQ},     {L"LAMBDA", compileLambdaForm},
  };
  return table;
}

}  // namespace

SpecialForm specialForm(const Symbol& symbol) {
  if (!symbol.value.isFunction() || symbol.value.function()->kind != Function::Kind::specialForm)
    return nullptr;
  const auto found = forms().find(symbol.value.function()->name);
  return found == forms().end() ? nullptr : found->second;
}

void defineSpecialForms(Interpreter& lisp) {
  for (const auto& [name, form] : forms()) {
    auto* made = new Function;
    made->kind = Function::Kind::specialForm;
    made->name = name;
    // Where one is called as if it were a function.
    made->native = [](const Call& call) -> Value { throw LispError(L"bad function: " + call.function.name); };
    lisp.intern(name)->value = Value(made);
  }
}

}  // namespace lisp
