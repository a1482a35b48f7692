#pragma once

#include <zip.h>

#include <optional>
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
};

/// The path that an entry's name stands for, or nothing when it is absolute, has a drive letter, a
/// part "..", or no part at all. Both `\` and `/` separate parts.
std::optional<std::string> safeEntryPath(std::string_view name);

/// All entries, or nothing with a reason when one of them must not be extracted.
std::optional<std::vector<ArchiveEntry>> checkedEntries(zip_t* archive, const ExtractLimits& limits,
                                                        std::string& reason);

}  // namespace platform
