#pragma once

#include "platform/desktop/form.h"

/// The frame in which the module's dialogs run.

/// The module's resources come first at the host's document manager as long as this lives. A dialog that
/// reads its data before it opens holds one from there to its end; pushes nest.
class ModuleResources {
 public:
  ModuleResources();
  ~ModuleResources();
  ModuleResources(const ModuleResources&) = delete;
  ModuleResources& operator=(const ModuleResources&) = delete;
};

/// Runs the dialog under the module's resources, and passes its result through `dialogGuard`: 1, or 2 when it
/// was cancelled, or a failure's number. Which button ended it tells `Form::endedBy`. The window that was
/// active before is active again afterwards.
int runModuleDialog(platform::Form& form);
