#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/lisp/interpreter.h"

namespace lisp {

/// Reads forms from UTF-8 source text, with or without a byte order mark. Nesting is bounded by memory
/// only. What is malformed throws LispError in the language's words, with file and line.
class Reader {
 public:
  /// `source` must outlive the reader. An empty `fileName` leaves the place out of errors.
  Reader(Interpreter& lisp, std::string_view source, std::wstring fileName = {});

  /// The next form; nothing at the end.
  std::optional<Value> next();
  /// The text of the form that `next` gave, and the line on which it begins, from 1.
  std::string_view formText() const { return source_.substr(formStart_, at_ - formStart_); }
  int formLine() const { return formLine_; }
  const std::wstring& fileName() const { return fileName_; }
  /// After an error: goes on behind the line on which it was found.
  void skipLine();

 private:
  bool skipBlanks();
  bool skipBlockComment();
  Value readAtom();
  Value readText();
  wchar_t readEscape(std::string& bytes);
  [[noreturn]] void fail(const wchar_t* message);
  char peek(size_t ahead = 0) const { return at_ + ahead < source_.size() ? source_[at_ + ahead] : '\0'; }
  void advance() {
    if (source_[at_++] == '\n') ++line_;
  }

  Interpreter& lisp_;
  std::string_view source_;
  std::wstring fileName_;
  Symbol* quote_;
  size_t at_ = 0;
  int line_ = 1;
  size_t formStart_ = 0;
  int formLine_ = 1;
};

/// What a token means: an integer, a real (also an integer beyond 32 bits), or a symbol.
Value readToken(Interpreter& lisp, std::string_view token);

}  // namespace lisp
