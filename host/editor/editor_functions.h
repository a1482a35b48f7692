#pragma once

#include <span>

#include "host/lisp/builtins.h"

namespace host {

/// Gives LISP the host's functions of input and selection.
void defineEditorFunctions(lisp::Interpreter& interpreter);

// A table for each subject.
std::span<const lisp::Builtin> dragFunctions();
std::span<const lisp::Builtin> getFunctions();
std::span<const lisp::Builtin> selectFunctions();
std::span<const lisp::Builtin> snapFunctions();

}  // namespace host
