#pragma once

#include <memory>
#include <string>

#include "platform/desktop/desktop.h"
#include "platform/desktop/form_script.h"

namespace platform {

/// The library of windows, `libzarbo_desktop_qt.so`, which is loaded when something is first to be shown or
/// drawn.

/// A function of a library that lies beside this one; null, with the reason, when it isn't there. The library
/// is never unloaded.
void* functionOfLibrary(const char* library, const char* name, std::string& reason);

/// Whether the toolkit comes up. It ends the process when the display can't be reached, so a child tries.
bool displayCanBeReached();

/// The desktop of the display; null, with the reason, when there is none to be had.
std::unique_ptr<Desktop> openDisplay(std::string& reason);

/// Plays the script on real widgets. Without a display nobody sees them.
int playOnWidgets(Form& form, const FormScript& script, ScriptList& log);

/// A `DrawForm`.
std::wstring drawWithWidgets(Form& form, const std::wstring& file, int width, int height, bool dark);

/// What the library offers for both.
class FormStage {
 public:
  virtual ~FormStage() = default;
  virtual int play(Form& form, const FormScript& script, ScriptList& log) = 0;
  virtual std::wstring draw(Form& form, const std::wstring& file, int width, int height, bool dark) = 0;
};

}  // namespace platform
