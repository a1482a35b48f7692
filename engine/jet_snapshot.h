#pragma once

#include <memory>
#include <string>

#include "platform/files/private_folder.h"

/// What a genuine Jet file holds, as a database of the engine in a private temporary file that goes with the
/// object. The file is read by the program `zarbo-mdb` beside the engine's library, so that a damaged one
/// can't harm this process.
class JetSnapshot {
 public:
  /// The last snapshot serves again as long as the Jet file is the same. Fails with 3343 and the reader's
  /// words when the file can't be read.
  static std::shared_ptr<const JetSnapshot> of(const std::string& source);

  explicit JetSnapshot(const std::string& source);

  const std::string& source() const { return source_; }
  const std::string& path() const { return path_; }

 private:
  std::string source_;
  platform::PrivateFolder folder_;
  std::string path_;
};
