#pragma once

#include <string>
#include <string_view>

#include "host/lisp/interpreter.h"

namespace host {

/// Evaluates a source text in the current document, which is busy as long. The value as `prin1` would write
/// it; throws `lisp::LispError`.
std::wstring evaluate(std::string_view source, const std::wstring& fileName);
/// Shows an error on lines of its own, with what was running; one that the program's `*error*` has seen
/// isn't.
void showError(const lisp::LispError& error);

/// What the host does between evaluations: lets go of closed documents, runs what was sent to open ones, and
/// tells who waits for idle moments.
void goIdle();

}  // namespace host
