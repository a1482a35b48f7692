#include <cstdlib>
#include <ctime>
#include <memory>

#include "brx/documents.h"
#include "brx/lisp_calls.h"
#include "brx/rx_modules.h"
#include "platform/com/class_objects.h"
#include "platform/process/process.h"
#include "zarbo/database/connections.h"
#include "zarbo/drawing/kv_leader.h"
#include "zarbo/frame/framework_exception.h"
#include "zarbo/jigs/jig_timers.h"
#include "zarbo/module/companion.h"
#include "zarbo/module/editor_reactor.h"
#include "zarbo/module/function_table.h"

#define ZARBO_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

const ACHAR* const solidModule = L"kv_kv-solidBrx21x64.arx";

/// The module's object for the host's kernel; adds nothing to its base.
class CDrxModule : public OdRxModule {};

int initModule(void* applicationId) {
  acrxLoadModule(solidModule, false);
  markProcess(L"KorvaneZarbo");
  std::srand(static_cast<unsigned>(std::time(nullptr)));
  startCompanion();
  addEditorReactor();
  acrxUnlockApplication(applicationId);
  acrxRegisterAppMDIAware(applicationId);
  KVLeader::rxInit();
  acrxBuildClassHierarchy();
  // Last, after the companion object has been made: the order is meant so.
  CoInitialize(nullptr);
  return AcRx::kRetOK;
}

int unloadModule() {
  stopJigTimers();
  KVLeader::rxRemove();
  stopCompanion();
  removeEditorReactor();
  acrxUnloadModule(solidModule);
  CoUninitialize();
  return AcRx::kRetOK;
}

int loadDrawing() {
  acutPrintf(L"\nLoading Korvane Zarbo (Jet64)");
  registerTable(zbFunctions(), 0);
  addDrawingRecord();
  registerTable(kvFunctions(), zbFunctionCount());
  return AcRx::kRetOK;
}

/// True when the drawing that is closing, which still counts as open, is the only one.
bool isLastDrawing() {
  const std::unique_ptr<AcApDocumentIterator> documents(acDocManagerPtr()->newAcApDocumentIterator());
  if (documents->done()) return true;
  documents->step();
  return documents->done();
}

int unloadDrawing() {
  ensureConnection();
  dropHeadRecord();
  if (isLastDrawing()) closeAllConnections();
  return AcRx::kRetOK;
}

int handle(AcRx::AppMsgCode message, void* applicationId) {
  switch (message) {
    case AcRx::kInitAppMsg:
      return initModule(applicationId);
    case AcRx::kUnloadAppMsg:
      return unloadModule();
    case AcRx::kLoadDwgMsg:
      return loadDrawing();
    case AcRx::kUnloadDwgMsg:
      return unloadDrawing();
    default:
      return AcRx::kRetOK;
  }
}

void printSystemError() {
  const unsigned error = lastSystemError();
  if (error != 0) {
    acutPrintf(L"\nSystem error %u.\n", error);
  } else {
    acutPrintf(L"\nZarbo error.\n");
  }
}

int writeApiVersion(int32_t* first, int32_t* second, int32_t* third, int32_t* fourth) {
  *first = 21;
  *second = 4;
  *third = 0;
  *fourth = 0;
  return 0;
}

}  // namespace

ZARBO_EXPORT int acrxEntryPoint(AcRx::AppMsgCode message, void* applicationId) {
  clearSystemError();
  try {
    return handle(message, applicationId);
  } catch (CException* problem) {
    acutPrintf(L"\nZarbo General Error:  %s", problem->message().substr(0, 999).c_str());
    problem->Delete();
  } catch (...) {
    printSystemError();
  }
  return AcRx::kRetError;
}

ZARBO_EXPORT int acrxGetApiVersion(int32_t* first, int32_t* second, int32_t* third, int32_t* fourth) {
  return writeApiVersion(first, second, third, fourth);
}

ZARBO_EXPORT int odrxGetAPIVersion(int32_t* first, int32_t* second, int32_t* third, int32_t* fourth) {
  return writeApiVersion(first, second, third, fourth);
}

/// The caller owns the object.
ZARBO_EXPORT OdRxModule* odrxCreateModuleObject() { return new CDrxModule; }
