#pragma once

#include <span>

#include "host/lisp/builtins.h"

namespace host {

/// Gives LISP the host's functions on drawings: entities, tables, dictionaries, extended data, sets.
void defineAccessFunctions(lisp::Interpreter& interpreter);

// A table for each subject.
std::span<const lisp::Builtin> entityFunctions();
std::span<const lisp::Builtin> tableFunctions();
std::span<const lisp::Builtin> dictionaryFunctions();
std::span<const lisp::Builtin> xdataFunctions();
std::span<const lisp::Builtin> coordinateFunctions();
std::span<const lisp::Builtin> selectionFunctions();
std::span<const lisp::Builtin> solidFunctions();

}  // namespace host
