#pragma once

#include <functional>
#include <memory>
#include <string>

#include "brx/resbuf.h"

namespace host {

struct Application;

/// The LISP of one document, as modules reach it. The interpreter stands behind it.
class DocumentLisp {
 public:
  virtual ~DocumentLisp() = default;
  /// Defines a function that calls the application's entry of that code.
  virtual void define(const std::wstring& name, Application& application, int code) = 0;
  /// Takes the name away if it still stands for that function.
  virtual void undefine(const std::wstring& name, Application& application, int code) = 0;
  /// Takes all of the application's functions away.
  virtual void forget(Application& application) = 0;
  /// Calls the function that the first buffer names; `result` receives a list that the caller frees. False
  /// when there is no such function or it ended in an error.
  virtual bool invoke(const resbuf& call, resbuf*& result) = 0;
  /// Whether the user has asked to stop since the last answer; the evaluation is not ended by it any more.
  virtual bool takeInterrupt() = 0;
};

using DocumentLispMaker = std::function<std::unique_ptr<DocumentLisp>()>;
/// Who makes the LISP of each document that is opened from now on.
void setDocumentLispMaker(DocumentLispMaker maker);

}  // namespace host
