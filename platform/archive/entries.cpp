#include "platform/archive/entries.h"

#include <sys/stat.h>

#include <algorithm>

#include "platform/text/letters.h"
#include "platform/text/utf.h"

namespace platform {

namespace {

constexpr size_t longestPart = 255;
constexpr const char* unsafeName = ": the name leads out of the folder or can't be one of a file";

/// The upper half of the attributes is the file's mode where the archive was made on such a system.
bool isPlainFileOrFolder(zip_t* archive, zip_uint64_t index) {
  zip_uint8_t system;
  zip_uint32_t attributes;
  if (zip_file_get_external_attributes(archive, index, 0, &system, &attributes) != 0) return false;
  const mode_t kind = (attributes >> 16) & S_IFMT;
  return kind == 0 || kind == S_IFREG || kind == S_IFDIR;
}

std::optional<ArchiveEntry> checkedEntry(zip_t* archive, zip_uint64_t index, std::string& reason) {
  zip_stat_t info;
  constexpr zip_uint64_t needed = ZIP_STAT_NAME | ZIP_STAT_SIZE | ZIP_STAT_ENCRYPTION_METHOD;
  if (zip_stat_index(archive, index, ZIP_FL_ENC_GUESS, &info) != 0 || (info.valid & needed) != needed) {
    reason = "entry " + std::to_string(index) + " can't be read";
    return std::nullopt;
  }
  const std::optional<std::string> path = safeEntryPath(info.name);
  const char last = info.name[0] ? std::string_view(info.name).back() : '\0';
  if (!path) {
    reason = std::string(info.name) + unsafeName;
  } else if (info.encryption_method != ZIP_EM_NONE) {
    reason = std::string(info.name) + ": encrypted";
  } else if (!isPlainFileOrFolder(archive, index)) {
    reason = std::string(info.name) + ": a link or special file";
  } else {
    return ArchiveEntry{index, *path, last == '/' || last == '\\', info.size,
                        (info.valid & ZIP_STAT_MTIME) != 0 ? info.mtime : std::time(nullptr)};
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::string> safeEntryPath(std::string_view name) {
  if (name.empty() || name.front() == '/' || name.front() == '\\') return std::nullopt;
  std::string path;
  while (!name.empty()) {
    const size_t end = std::min(name.find_first_of("/\\"), name.size());
    const std::string_view part = name.substr(0, end);
    name.remove_prefix(std::min(end + 1, name.size()));
    if (part.empty() || part == ".") continue;
    // A colon is a drive letter or a hidden stream of a file on other systems.
    if (part == ".." || part.size() > longestPart || part.find(':') != std::string_view::npos)
      return std::nullopt;
    if (!path.empty()) path += '/';
    path += part;
  }
  return path.empty() ? std::nullopt : std::optional(path);
}

std::string EntryNames::add(std::string_view name, bool isFolder) {
  const std::optional<std::string> path = safeEntryPath(name);
  if (!path) return std::string(name) + unsafeName;
  if (isFolder || files_.insert(upperCased(fromUtf8(*path))).second) return {};
  return *path + ": stands there twice";
}

std::string EntryNames::mended(std::string name) const {
  std::replace(name.begin(), name.end(), ':', '_');
  const size_t bare = name.rfind('/') + 1, point = name.rfind('.');  // npos + 1 is 0
  const size_t stem = point == std::string::npos || point <= bare ? name.size() : point;
  std::string distinct = name;
  for (int number = 2; files_.contains(upperCased(fromUtf8(distinct))); ++number)
    distinct = name.substr(0, stem) + " (" + std::to_string(number) + ")" + name.substr(stem);
  return distinct;
}

std::optional<std::vector<ArchiveEntry>> checkedEntries(zip_t* archive, const ExtractLimits& limits,
                                                        std::string& reason) {
  const auto count = static_cast<zip_uint64_t>(std::max<zip_int64_t>(zip_get_num_entries(archive, 0), 0));
  if (count > limits.entries) {
    reason = "too many entries";
    return std::nullopt;
  }
  std::vector<ArchiveEntry> entries;
  EntryNames names;
  uint64_t left = limits.bytes;
  for (zip_uint64_t index = 0; index < count; ++index) {
    std::optional<ArchiveEntry> entry = checkedEntry(archive, index, reason);
    if (!entry) return std::nullopt;
    if (entry->size > left) {
      reason = "too large";
      return std::nullopt;
    }
    left -= entry->size;
    reason = names.add(entry->path, entry->isFolder);
    if (!reason.empty()) return std::nullopt;
    entries.push_back(std::move(*entry));
  }
  return entries;
}

}  // namespace platform
