#pragma once

#include <string>
#include <string_view>

#include "host/lisp/interpreter.h"

namespace host {

/// Evaluates a source text in the current document, which is busy as long. Throws `lisp::LispError`.
lisp::Value evaluateSource(std::string_view source, const std::wstring& fileName);

/// What the host does between evaluations: lets go of closed documents, and runs what was sent to open ones.
void goIdle();

}  // namespace host
