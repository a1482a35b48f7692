#pragma once

#include "host/lisp/interpreter.h"
#include "platform/desktop/form_script.h"

namespace host {

/// An action like ("set" 1056 "text"); raises a LISP error for what isn't one.
platform::ScriptAction readAction(const lisp::Call& call, const lisp::Value& value);
lisp::Value toLisp(const lisp::Call& call, const platform::ScriptList& values);

}  // namespace host
