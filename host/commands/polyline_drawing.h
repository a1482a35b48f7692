#pragma once

#include "host/commands/command_input.h"

namespace host {

/// The commands that make light polylines.
Task<> drawPolyline(CommandInput& input);
Task<> drawRectangle(CommandInput& input);

}  // namespace host
