#pragma once

#include <string>

#include "platform/desktop/desktop.h"

namespace platform {

/// What a name that a person typed stands for: inside the chooser's folder unless it is a full path, and with
/// the default extension when it has none and there is no file of that very name.
std::wstring finishedChoice(const FileChoice& choice, const std::wstring& typed);

}  // namespace platform
