#pragma once

#include <span>
#include <string>

#include "host/lisp/interpreter.h"
#include "platform/text/letters.h"

/// The language's own functions, a table for each subject: a row is a name, a small body and the
/// number of arguments.

namespace lisp {

struct Builtin {
  const wchar_t* name;
  Native body;
  int fewest = 0;
  int most = anyCount;
};

void defineBuiltins(Interpreter& lisp);

std::span<const Builtin> listBuiltins();
std::span<const Builtin> numberBuiltins();
std::span<const Builtin> stringBuiltins();
std::span<const Builtin> controlBuiltins();
std::span<const Builtin> outputBuiltins();
std::span<const Builtin> fileBuiltins();
std::span<const Builtin> geometryBuiltins();
std::span<const Builtin> unitBuiltins();
std::span<const Builtin> vlListBuiltins();
std::span<const Builtin> vlStringBuiltins();

/// The character of a code; raises an error for what no text can hold.
wchar_t characterOf(const Value& code);
/// The elements of a proper list; raises "bad argument type: listp" for any other value.
std::vector<Value> elementsOf(const Value& list);
Value listOf(std::span<const Value> values);

}  // namespace lisp
