#pragma once

#include <optional>
#include <string>

#include "brx/db_entity.h"

namespace host {

/// "1" to "255", "red" and its fellows (seven have names), "BYLAYER", "BYBLOCK", or "red,green,blue" from 0
/// to 255 each. Nothing for any other text.
std::optional<AcCmColor> parseColour(const std::wstring& text);

}  // namespace host
