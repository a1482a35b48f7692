#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>

#include "zarbo/frame/list_builder.h"

/// A call of a LISP function that the application supplies.
class ApplicationCall {
 public:
  explicit ApplicationCall(const ACHAR* function) { appendValue(call_, function); }
  ~ApplicationCall();
  ApplicationCall(const ApplicationCall&) = delete;
  ApplicationCall& operator=(const ApplicationCall&) = delete;

  ApplicationCall& text(const std::wstring& value) { return appendValue(call_, value), *this; }
  ApplicationCall& longInteger(int32_t value) { return appendValue(call_, value), *this; }
  ApplicationCall& shortInteger(int16_t value);
  ApplicationCall& real(double value) { return appendValue(call_, value), *this; }
  /// A list of reals.
  ApplicationCall& reals(std::initializer_list<double> values);
  ApplicationCall& nil() { return appendValue(call_, nullptr), *this; }

  /// False when the function isn't there or fails; the answer is nil then.
  bool invoke();
  bool answersNil() const { return !answer_ || answer_->restype == RTNIL; }
  /// Nothing for any other answer.
  std::optional<std::wstring> textAnswer() const;
  /// The answer's buffers; null for none.
  const resbuf* answer() const { return answer_; }

 private:
  LispList call_;
  resbuf* answer_ = nullptr;
};
