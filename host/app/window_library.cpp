#include "host/app/window_library.h"

#include "platform/desktop/toolkit.h"

namespace host {

std::unique_ptr<Window> openWindow(const WindowServices& services, std::string& reason) {
  reason = "the display can't be reached";
  if (!platform::displayCanBeReached()) return nullptr;
  const auto make = reinterpret_cast<Window* (*)(const WindowServices&)>(
      platform::functionOfLibrary("libzarbo_window.so", "makeWindow", reason));
  return std::unique_ptr<Window>(make ? make(services) : nullptr);
}

}  // namespace host
