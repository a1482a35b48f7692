#include <string>

#include "brx/editor_input.h"
#include "brx/lisp_calls.h"
#include "host/calls/served_call.h"
#include "host/documents/documents.h"
#include "host/rx/modules.h"

namespace {

using host::documents;
using host::modules;

/// Codes are small; a module that goes beyond this has lost its count.
constexpr int mostFunctions = 100000;

bool isCode(int code) { return code >= 0 && code < mostFunctions; }

host::DocumentLisp* currentLisp() { return documents().lisp(); }

/// A call back goes to the LISP that made the call, whichever document is current by now.
host::DocumentLisp* callingLisp() {
  host::DocumentLisp* const calling = host::servedCall() ? host::servedCall()->lisp() : nullptr;
  return calling ? calling : currentLisp();
}

}  // namespace

int acedDefun(const ACHAR* name, int code) {
  if (!name || !*name || !isCode(code) || !modules().current() || !currentLisp()) return RTERROR;
  currentLisp()->define(name, *modules().current(), code);
  return RTNORM;
}

int acedUndef(const ACHAR* name, int code) {
  if (!name || !isCode(code) || !modules().current() || !currentLisp()) return RTERROR;
  currentLisp()->undefine(name, *modules().current(), code);
  return RTNORM;
}

int acedRegFunc(int (*entry)(), int code) {
  if (!isCode(code) || !modules().current()) return RTERROR;
  auto& functions = modules().current()->functions;
  if (functions.size() <= static_cast<size_t>(code)) functions.resize(static_cast<size_t>(code) + 1);
  functions[static_cast<size_t>(code)] = entry;
  return RTNORM;
}

bool acedUsrBrk() { return callingLisp() && callingLisp()->takeInterrupt(); }

int acedInvoke(const resbuf* call, resbuf** result) {
  if (result) *result = nullptr;
  if (!call || call->restype != RTSTR || !call->resval.rstring || !callingLisp()) return RTERROR;
  resbuf* values = nullptr;
  if (!callingLisp()->invoke(*call, values)) return RTERROR;
  if (result) {
    *result = values;
  } else if (values) {
    acutRelRb(values);
  }
  return RTNORM;
}
