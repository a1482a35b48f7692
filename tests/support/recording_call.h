#pragma once

#include <string>
#include <utility>

#include "brx/lisp_calls.h"
#include "host/calls/served_call.h"

/// A LISP call made by a test: it hands out a list of arguments once, and keeps the result as text,
/// "( ( a . 1 ) T ) ".
class RecordingCall : public host::ServedCall {
 public:
  std::wstring result;

  explicit RecordingCall(resbuf* arguments = nullptr) : arguments_(arguments) {}
  ~RecordingCall() override {
    if (arguments_) acutRelRb(arguments_);
  }

  int functionCode() const override { return 0; }
  resbuf* arguments() const override { return std::exchange(arguments_, nullptr); }
  void setResult(const resbuf* value) override { result = describe(value); }
  void setListResult(const resbuf* values) override { result = describe(values); }

 private:
  static std::wstring describe(const resbuf* values) {
    std::wstring text;
    for (; values; values = values->rbnext) text += describeOne(*values) + L" ";
    return text;
  }
  static std::wstring describeOne(const resbuf& value) {
    switch (value.restype) {
      case RTLB:
        return L"(";
      case RTLE:
        return L")";
      case RTDOTE:
        return L".";
      case RTNIL:
        return L"nil";
      case RTT:
        return L"T";
      case RTSTR:
        return value.resval.rstring;
      case RTREAL:
        return std::to_wstring(value.resval.rreal);
      case RTSHORT:
        return std::to_wstring(value.resval.rint);
      case RTLONG:
        return std::to_wstring(value.resval.rlong);
      default:
        return L"?" + std::to_wstring(value.restype);
    }
  }
  mutable resbuf* arguments_;
};

/// Does the work inside a call with these arguments, which it takes over; answers the result as text.
template <class Work>
std::wstring served(resbuf* arguments, Work work) {
  RecordingCall call(arguments);
  const host::ServingGuard serving(call);
  work();
  return call.result;
}
