#pragma once

#include <string>

/// The hook for the steps of sending a report: it is given each line and, as shipped, writes none of them.
/// The file's name is kept for a form that does.
class StepLog {
 public:
  explicit StepLog(std::wstring file) : file_(std::move(file)) {}
  virtual ~StepLog() = default;

  virtual void open() {}
  virtual void write(const wchar_t* /*line*/) {}
  virtual void close() {}
  const std::wstring& file() const { return file_; }

 private:
  std::wstring file_;
};
