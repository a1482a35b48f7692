#pragma once

#include "host/lisp/interpreter.h"

namespace host {

/// Gives LISP `command` and its fellows, and PAUSE.
void defineCommandFunctions(lisp::Interpreter& interpreter);

}  // namespace host
