#include "zarbo/frame/guarded_call.h"

#include "brx/lisp_calls.h"
#include "zarbo/frame/framework_exception.h"

namespace {

int refuse(const ACHAR* message) {
  acutPrintf(L"%s", message);
  return RSERR;
}

}  // namespace

int guardResult(int code) {
  switch (code) {
    case tooFewArguments:
      return refuse(L"\nToo few arguments passed.\n");
    case wrongType:
      return refuse(L"\nWrong type of arguments passed.\n");
    case badData:
      return refuse(L"\nBad data passed .\n");  // the blank is part of the text
    case failedVisibly:
      acedTextScr();
      return refuse(L"");
    default:
      return RSRSLT;
  }
}

int guardedCall(Body body) {
  try {
    return guardResult(body());
  } catch (CException*) {
    acutPrintf(L"\nGeneral Exception");
    throw;
  } catch (...) {
    acutPrintf(L"\nError");
    throw;
  }
}
