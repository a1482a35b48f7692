#pragma once

#include <sys/types.h>

#include <string>

#include "platform/files/posix/descriptor.h"

namespace platform {

/// A file that grows in a folder, without a name or under a hidden one that nobody else has, until it is
/// complete. It is locked as long as it grows, so that one without a lock was left by a process that was
/// killed; those are taken away when the next one begins. A failure leaves its reason in `errno`.
class HiddenFile {
 public:
  enum class Name { atTheEnd, fromTheBeginning };
  /// Where the file system has no files without a name, it gets one at once.
  HiddenFile(const std::string& folder, Name name);
  ~HiddenFile() { abandon(); }

  bool good() const { return file_.good(); }
  int descriptor() const { return file_.number; }
  /// Empty while it has none.
  const std::string& path() const { return path_; }

  /// Gives it these permissions, brings it to the disk, and lets it take the place of the target.
  bool replace(const std::string& target, mode_t mode);
  /// The same where there is no such file; EEXIST otherwise.
  bool appear(const std::string& target, mode_t mode);
  void abandon();

 private:
  void createNamed();
  bool giveName();
  bool settle(const std::string& target, mode_t mode, bool (*move)(const char*, const char*));

  std::string folder_, path_;
  Descriptor file_;
};

/// Permission bits that a new file gets.
mode_t modeOfNewFile();

/// Moves within one file system, never over something that is there.
bool moveWithoutReplacing(const char* source, const char* target);

}  // namespace platform
