#include "zarbo/widgets/dialog.h"

#include "brx/documents.h"
#include "platform/desktop/desktop.h"
#include "zarbo/support/repair_offers.h"

namespace {

/// Any address in the module's library tells the host which it is.
void* moduleHandle() {
  static char place;
  return &place;
}

}  // namespace

ModuleResources::ModuleResources() { acDocManagerPtr()->pushResourceHandle(moduleHandle()); }

ModuleResources::~ModuleResources() { acDocManagerPtr()->popResourceHandle(); }

int runModuleDialog(platform::Form& form) {
  const ModuleResources resources;
  return dialogGuard(platform::desktop().runDialog(form));
}
