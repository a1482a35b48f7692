#pragma once

#include <optional>
#include <string>

namespace host {

/// A line from the terminal, without its end. Nothing at the end of input, and when the user interrupts or
/// has interrupted since `platform::forgetInterrupts`.
std::optional<std::wstring> readTerminalLine();

}  // namespace host
