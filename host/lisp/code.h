#pragma once

#include <memory>
#include <vector>

#include "host/lisp/interpreter.h"

/// Analysed programs: a tree of nodes in which special forms are told from calls and symbols are
/// resolved, so that nothing is looked up by name while it runs. Lists stay the program's true form.

namespace lisp {

struct Code {
  virtual ~Code() = default;
  virtual Value run(Interpreter& lisp) const = 0;
};
using CodePtr = std::unique_ptr<Code>;
using CodeList = std::vector<CodePtr>;

inline void Interpreter::Frame::addResult(const Code& code) {
  new (end_) Value(code.run(lisp_));
  ++end_;
}

/// The value of the last, nil of none.
inline Value runAll(const CodeList& body, Interpreter& lisp) {
  if (body.empty()) return {};
  for (size_t i = 0; i + 1 < body.size(); ++i) body[i]->run(lisp);
  return body.back()->run(lisp);
}

struct Lambda {
  std::vector<Symbol*> parameters;
  std::vector<Symbol*> locals;
  CodeList body;
  /// Parameter list and body, as `defun-q` keeps them and as they print.
  Value source;
};

CodePtr compile(const Value& form, Interpreter& lisp);
CodeList compileAll(const Value& forms, Interpreter& lisp);
/// Of `(parameters body…)`. Raises "syntax error" for a parameter list that is none.
std::unique_ptr<Lambda> compileLambda(const Value& source, Interpreter& lisp);
Value makeFunction(std::wstring name, std::unique_ptr<Lambda> lambda);

/// Compiles one special form: its arguments unevaluated.
using SpecialForm = CodePtr (*)(const Value& args, Interpreter& lisp);
/// Null when the symbol names none.
SpecialForm specialForm(const Symbol& symbol);
void defineSpecialForms(Interpreter& lisp);

}  // namespace lisp
