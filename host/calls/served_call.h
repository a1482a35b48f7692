#pragma once

#include "brx/resbuf.h"

namespace host {

class DocumentLisp;

/// A LISP call that a module's function is serving.
class ServedCall {
 public:
  virtual ~ServedCall() = default;
  virtual int functionCode() const = 0;
  /// A new list, the caller's; null when there are no arguments.
  virtual resbuf* arguments() const = 0;
  /// One value; null is nil. The buffer stays the caller's.
  virtual void setResult(const resbuf* value) = 0;
  /// A list of values.
  virtual void setListResult(const resbuf* values) = 0;
  /// The LISP that makes the call, to be called back; null for a call from elsewhere.
  virtual DocumentLisp* lisp() const { return nullptr; }
};

/// The innermost call that is being served; null outside of all.
ServedCall* servedCall();

/// Makes a call the innermost one for as long as the guard lives.
class ServingGuard {
 public:
  explicit ServingGuard(ServedCall& call);
  ~ServingGuard();
  ServingGuard(const ServingGuard&) = delete;
  ServingGuard& operator=(const ServingGuard&) = delete;

 private:
  ServedCall* former_;
};

}  // namespace host
