// A module with a timer, for the tests of the program at a terminal.
#include "brx/lisp_calls.h"
#include "brx/rx_modules.h"
#include "platform/desktop/desktop.h"

namespace {

unsigned timer = 0;
int ticks = 0;

void tick() { acutPrintf(L"\ntick %d.\n", ++ticks); }

}  // namespace

extern "C" __attribute__((visibility("default"))) int acrxEntryPoint(AcRx::AppMsgCode message,
                                                                     void* applicationId) {
  if (message == AcRx::kInitAppMsg) {
    acrxUnlockApplication(applicationId);
    acrxRegisterAppMDIAware(applicationId);
    timer = platform::desktop().startTimer(std::chrono::milliseconds(50), tick);
  } else if (message == AcRx::kUnloadAppMsg) {
    platform::desktop().stopTimer(timer);
  }
  return AcRx::kRetOK;
}
