#pragma once

#include "host/documents/document_lisp.h"
#include "host/lisp/interpreter.h"

namespace host {

/// The interpreter of a document, and what the host gives it: command line, variables, files.
class InterpreterOfDocument : public DocumentLisp, private lisp::Services {
 public:
  InterpreterOfDocument();
  ~InterpreterOfDocument() override;

  lisp::Interpreter& interpreter() { return interpreter_; }
  /// The document's LISP of an interpreter that was made here.
  static InterpreterOfDocument& of(lisp::Interpreter& interpreter);

  void define(const std::wstring& name, Application& application, int code) override;
  void undefine(const std::wstring& name, Application& application, int code) override;
  void forget(Application& application) override;
  bool invoke(const resbuf& call, resbuf*& result) override;
  bool takeInterrupt() override { return interpreter_.takeInterrupt(); }

 private:
  void print(std::wstring_view text) override;
  void alert(const std::wstring& message) override;
  std::optional<std::wstring> readLine() override;
  std::optional<lisp::Value> variable(const std::wstring& name) override;
  bool setVariable(const std::wstring& name, const lisp::Value& value) override;
  std::string decodeSource(std::string bytes, const std::wstring& fileName) override;
  std::optional<std::wstring> findFile(const std::wstring& name) override;

  struct Defined {
    std::wstring name;
    Application* application;
    int code;
  };
  void undefineName(const Defined& defined);

  std::vector<Defined> defined_;
  lisp::Interpreter interpreter_;
};

/// The interpreter in which the program evaluates; there is one as soon as a document was opened.
lisp::Interpreter& currentInterpreter();

}  // namespace host
