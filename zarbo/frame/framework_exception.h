#pragma once

#include <string>

/// Failure that the windows framework raises (a dialog template that is missing, a full clipboard).
/// Thrown by pointer; whoever ends its way calls `Delete`.
class CException {
 public:
  explicit CException(std::wstring message) : message_(std::move(message)) {}
  virtual ~CException() = default;
  const std::wstring& message() const { return message_; }
  void Delete() { delete this; }

 private:
  std::wstring message_;
};
