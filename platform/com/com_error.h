#pragma once

#include <exception>
#include <string>

#include "platform/com/types.h"

/// A COM call that failed: its HRESULT and the interface that was called.
class ComError : public std::exception {
 public:
  ComError(HRESULT result, const IID& iid);
  const char* what() const noexcept override { return text_.c_str(); }
  HRESULT result() const { return result_; }
  const IID& iid() const { return iid_; }

 private:
  HRESULT result_;
  IID iid_;
  std::string text_;
};

[[noreturn]] void throwComError(HRESULT result, const IID& iid);

/// Throws ComError for a failing result; gives any other back.
inline HRESULT checkResult(HRESULT result, const IID& iid = interfaceId<IUnknown>) {
  if (FAILED(result)) throwComError(result, iid);
  return result;
}
