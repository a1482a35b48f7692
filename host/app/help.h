#pragma once

#include "host/lisp/interpreter.h"

namespace host {

/// `(help)` tells what there is, `(help "name")` what a name means: a function, a command, a variable.
void defineHelp(lisp::Interpreter& interpreter);

}  // namespace host
