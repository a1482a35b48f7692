#include "zarbo/frame/application_call.h"

#include <utility>

ApplicationCall::~ApplicationCall() {
  if (answer_) acutRelRb(answer_);
}

ApplicationCall& ApplicationCall::shortInteger(int16_t value) {
  resbuf* const made = acutNewRb(RTSHORT);
  made->resval.rint = value;
  appendBuffers(call_, made);
  return *this;
}

ApplicationCall& ApplicationCall::reals(std::initializer_list<double> values) {
  appendMark(call_, RTLB);
  for (const double each : values) appendValue(call_, each);
  appendMark(call_, RTLE);
  return *this;
}

bool ApplicationCall::invoke() {
  if (acedInvoke(call_.head, &answer_) == RTNORM) return true;
  if (answer_) acutRelRb(std::exchange(answer_, nullptr));
  return false;
}

std::optional<std::wstring> ApplicationCall::textAnswer() const {
  if (!answer_ || answer_->restype != RTSTR || !answer_->resval.rstring) return std::nullopt;
  return answer_->resval.rstring;
}
