#pragma once

#include "host/lisp/interpreter.h"

namespace host {

/// Gives LISP the functions of the host that scripts and tests use: output, documents, modules, queued
/// answers and input. Their names begin with "host-", but for `arxload`, `arxunload` and `arx`.
void defineScriptFunctions(lisp::Interpreter& interpreter);

}  // namespace host
