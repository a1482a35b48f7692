#pragma once

#include "brx/rx_object.h"

/// Messages to and loading of run-time extension modules.

namespace AcRx {
enum AppMsgCode {
  kNullMsg = 0,
  kInitAppMsg = 1,
  kUnloadAppMsg = 2,
  kLoadDwgMsg = 3,
  kUnloadDwgMsg = 4,
  kInvkSubrMsg = 5,
  kCfgMsg = 6,
  kEndMsg = 7,
  kQuitMsg = 8,
  kSaveMsg = 9,
};
enum AppRetCode { kRetOK = 0, kRetError = 3 };
}  // namespace AcRx

/// Loads a module by file name (looked for beside the program and on the support path); false when
/// it isn't there, has no entry or refuses its init message. `print` lets the host say so.
bool acrxLoadModule(const ACHAR* fileName, bool print, bool asCommand = false);
bool acrxUnloadModule(const ACHAR* fileName, bool asCommand = false);
/// Allows that the application is unloaded again.
bool acrxUnlockApplication(void* applicationId);
/// The application works with several open documents.
bool acrxRegisterAppMDIAware(void* applicationId);

/// Object by which the host's kernel knows a module.
class BRX_API OdRxModule : public AcRxObject {
 public:
  OdRxModule();
  ~OdRxModule() override;
};
