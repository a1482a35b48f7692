#pragma once

#include <string>
#include <vector>

#include "brx/db_ids.h"

namespace host {

/// What was wrong in a drawing file, and what became of it.
struct FilingMessage {
  /// Line of the text file, or byte of a binary one; 0 when the message is about the whole file.
  size_t place = 0;
  AcDbHandle handle = 0;  // 0 without one
  std::wstring text;
};

/// Messages of one reading or writing, in order. A file that is wrong everywhere fills no memory: the
/// first thousand are kept, all are counted.
class FilingReport {
 public:
  static constexpr size_t mostKept = 1000;
  void add(size_t place, AcDbHandle handle, std::wstring text);
  const std::vector<FilingMessage>& messages() const { return messages_; }
  size_t count() const { return count_; }
  /// One line for each of the first messages, and one that counts the others; each line begins with
  /// the file's name.
  std::wstring text(const std::wstring& file, size_t most = 20) const;

 private:
  std::vector<FilingMessage> messages_;
  size_t count_ = 0;
};

}  // namespace host
