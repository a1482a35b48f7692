#include "zarbo/frame/application_call.h"

ApplicationCall::~ApplicationCall() {
  if (answer_) acutRelRb(answer_);
}

ApplicationCall& ApplicationCall::shortInteger(int16_t value) {
  resbuf* const made = acutNewRb(RTSHORT);
  made->resval.rint = value;
  appendBuffers(call_, made);
  return *this;
}

bool ApplicationCall::invoke() { return acedInvoke(call_.head, &answer_) == RTNORM; }

std::optional<std::wstring> ApplicationCall::textAnswer() const {
  if (!answer_ || answer_->restype != RTSTR || !answer_->resval.rstring) return std::nullopt;
  return answer_->resval.rstring;
}
