#pragma once

#include <zip.h>

#include <ctime>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/archive/archive_writer.h"

namespace platform {

/// One entry of an archive that may be extracted.
struct ArchiveEntry {
  zip_uint64_t index;
  std::string path;  ///< relative, parts joined by "/"; without a closing one
  bool isFolder;
  zip_uint64_t size;
  time_t modified;
};

/// The path that an entry's name stands for, or nothing when it is absolute, has a drive letter, a
/// part "..", or no part at all. Both `\` and `/` separate parts.
std::optional<std::string> safeEntryPath(std::string_view name);

/// The names of one archive's files and folders, so that each extracts to a place of its own.
class EntryNames {
 public:
  /// Empty, or why the name can't be extracted beside those before it.
  std::string add(std::string_view name, bool isFolder);
  /// The name, changed where `add` would refuse a file under it.
  std::string mended(std::string name) const;
  void clear() { files_.clear(); }

 private:
  std::set<std::wstring>
      files_;  ///< in capital letters: what differs in case only is one file on other systems
};

/// All entries, or nothing with a reason when one of them must not be extracted.
std::optional<std::vector<ArchiveEntry>> checkedEntries(zip_t* archive, const ExtractLimits& limits,
                                                        std::string& reason);

}  // namespace platform
