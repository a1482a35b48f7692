#pragma once

#include <optional>
#include <string>

namespace host {

/// Runs a line (or a form of several) as a person types it at the prompt: a command by its name, a command
/// that a program has defined as C:NAME, or LISP. The value as `prin1` would write it; nothing after a
/// command of the host. Throws `lisp::LispError`.
std::optional<std::wstring> runTypedLine(const std::string& source);

}  // namespace host
