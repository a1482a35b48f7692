#pragma once

#include <memory>
#include <string>

#include "platform/files/file_facts.h"

namespace platform {

class HiddenFile;

/// A `WholeFile` for those who write by a name: it has a hidden one that nobody else has from the beginning,
/// and never takes another file's place.
class GrowingFile {
 public:
  /// UTF-8. Makes it, empty.
  explicit GrowingFile(const std::string& target);
  ~GrowingFile();
  GrowingFile(const GrowingFile&) = delete;
  GrowingFile& operator=(const GrowingFile&) = delete;

  const std::string& path() const { return path_; }
  FileProblem problem() const { return problem_; }
  /// Brings the content to the disk and gives it the target's name; false, with `exists`, when there is
  /// such a file.
  bool appear();

 private:
  std::string target_, path_;
  std::unique_ptr<HiddenFile> file_;
  FileProblem problem_ = FileProblem::none;
};

}  // namespace platform
