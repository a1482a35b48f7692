#pragma once

class QApplication;

namespace platform {

/// The process's application of windows. The first call makes it when nobody has, and it stays to the end of
/// the process. It needs a display, or QT_QPA_PLATFORM=offscreen; without one the library ends the process.
QApplication& qtApplication();

}  // namespace platform
