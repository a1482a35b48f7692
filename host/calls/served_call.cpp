#include "host/calls/served_call.h"

#include <cstring>

#include "brx/lisp_calls.h"

namespace host {
namespace {

ServedCall* innermost = nullptr;

}  // namespace

ServedCall* servedCall() { return innermost; }
ServingGuard::ServingGuard(ServedCall& call) : former_(innermost) { innermost = &call; }
ServingGuard::~ServingGuard() { innermost = former_; }

}  // namespace host

namespace {

/// Outside of a call there is nobody to take a result.
int giveResult(const resbuf* value) {
  host::ServedCall* const call = host::servedCall();
  if (!call) return RTERROR;
  call->setResult(value);
  return RTNORM;
}

int giveWord(int16_t type) {
  resbuf value{};
  value.restype = type;
  return giveResult(&value);
}

}  // namespace

int acedGetFunCode() { return host::servedCall() ? host::servedCall()->functionCode() : RTERROR; }
resbuf* acedGetArgs() { return host::servedCall() ? host::servedCall()->arguments() : nullptr; }

int acedRetStr(const ACHAR* text) {
  if (!text) return giveWord(RTNIL);
  resbuf value{};
  value.restype = RTSTR;
  value.resval.rstring = const_cast<ACHAR*>(text);  // only read, and kept by nobody
  return giveResult(&value);
}

int acedRetInt(int number) {
  resbuf value{};
  value.restype = RTLONG;
  value.resval.rlong = number;
  return giveResult(&value);
}

int acedRetReal(ads_real number) {
  resbuf value{};
  value.restype = RTREAL;
  value.resval.rreal = number;
  return giveResult(&value);
}

int acedRetPoint(const ads_point point) {
  resbuf value{};
  value.restype = RT3DPOINT;
  std::memcpy(value.resval.rpoint, point, sizeof value.resval.rpoint);
  return giveResult(&value);
}

int acedRetT() { return giveWord(RTT); }
int acedRetNil() { return giveWord(RTNIL); }
int acedRetVoid() { return giveWord(RTVOID); }

int acedRetList(const resbuf* list) {
  if (!host::servedCall()) return RTERROR;
  host::servedCall()->setListResult(list);
  return RTNORM;
}

int acedRetVal(const resbuf* value) { return giveResult(value); }

int acedRetName(const ads_name name, int type) {
  if (type != RTENAME && type != RTPICKS) return RTERROR;
  resbuf value{};
  value.restype = static_cast<int16_t>(type);
  ads_name_set(name, value.resval.rlname);
  return giveResult(&value);
}
