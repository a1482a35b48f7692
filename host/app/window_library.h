#pragma once

#include <memory>
#include <string>

#include "host/window/window.h"

namespace host {

/// Loads the library of the main window; null, with the reason, when there is no window to be had.
std::unique_ptr<Window> openWindow(const WindowServices& services, std::string& reason);

}  // namespace host
