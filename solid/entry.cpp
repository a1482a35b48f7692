#include "brx/rx_modules.h"
#include "solid/hvac_solid.h"

#define SOLID_EXPORT extern "C" __attribute__((visibility("default")))

/// The module's life: its class is there from init to unload.

SOLID_EXPORT int acrxEntryPoint(AcRx::AppMsgCode message, void* applicationId) {
  switch (message) {
    case AcRx::kInitAppMsg:
      acrxUnlockApplication(applicationId);
      acrxRegisterAppMDIAware(applicationId);
      HvacSolid::rxInit();
      acrxBuildClassHierarchy();
      break;
    case AcRx::kUnloadAppMsg:
      HvacSolid::rxRemove();
      break;
    default:
      break;
  }
  return AcRx::kRetOK;
}

SOLID_EXPORT int acrxGetApiVersion(int32_t* first, int32_t* second, int32_t* third, int32_t* fourth) {
  *first = 21, *second = 4, *third = 0, *fourth = 0;
  return 0;
}
