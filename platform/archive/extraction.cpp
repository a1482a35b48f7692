#include "platform/archive/extraction.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <vector>

#include "platform/archive/entries.h"
#include "platform/files/private_folder.h"

namespace platform {

namespace {

namespace fs = std::filesystem;

struct ClosedDescriptor {
  int number;
  ~ClosedDescriptor() {
    if (number >= 0) close(number);
  }
};

bool writeAll(int descriptor, const char* bytes, size_t length) {
  while (length != 0) {
    const ssize_t written = write(descriptor, bytes, length);
    if (written < 0 && errno != EINTR) return false;
    if (written > 0) bytes += written, length -= static_cast<size_t>(written);
  }
  return true;
}

// Not more than the entry claims, since that is what the limit was checked against.
bool unpack(zip_file_t* source, int target, zip_uint64_t size) {
  std::array<char, 1 << 16> buffer;
  for (;;) {
    const zip_int64_t count = zip_fread(source, buffer.data(), buffer.size());
    if (count < 0 || static_cast<zip_uint64_t>(count) > size) return false;
    if (count == 0) return size == 0;
    if (!writeAll(target, buffer.data(), static_cast<size_t>(count))) return false;
    size -= static_cast<zip_uint64_t>(count);
  }
}

bool extractFile(zip_t* archive, const ArchiveEntry& entry, const std::string& path) {
  const std::unique_ptr<zip_file_t, int (*)(zip_file_t*)> source(zip_fopen_index(archive, entry.index, 0),
                                                                 &zip_fclose);
  if (!source) return false;
  const ClosedDescriptor target{
      open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0666)};
  const timespec times[] = {{entry.modified, 0}, {entry.modified, 0}};
  return target.number >= 0 && unpack(source.get(), target.number, entry.size) &&
         futimens(target.number, times) == 0 && fsync(target.number) == 0;
}

bool extractEntry(zip_t* archive, const ArchiveEntry& entry, const std::string& staging) {
  const fs::path path = fs::path(staging) / entry.path;
  std::error_code problem;
  fs::create_directories(entry.isFolder ? path : path.parent_path(), problem);
  if (problem) return false;
  return entry.isFolder || extractFile(archive, entry, path.native());
}

// What may stand at the target: nothing, a file that may be written where a file comes, and a real folder,
// not a link to one, where a folder comes.
bool fits(const fs::path& target, bool isFolder) {
  std::error_code problem;
  const fs::file_status status = fs::symlink_status(target, problem);
  if (status.type() == fs::file_type::not_found) return true;
  if (isFolder) return status.type() == fs::file_type::directory;
  constexpr auto writers = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
  return status.type() == fs::file_type::regular && (status.permissions() & writers) != fs::perms::none;
}

bool moveIntoPlace(const fs::path& staging, const fs::path& folder) {
  std::error_code problem;
  std::vector<std::pair<fs::path, bool>> items;
  for (fs::recursive_directory_iterator at(staging, problem);
       !problem && at != fs::recursive_directory_iterator(); at.increment(problem))
    items.emplace_back(at->path().lexically_relative(staging), at->is_directory(problem));
  for (const auto& [path, isFolder] : items) {
    if (problem || !fits(folder / path, isFolder)) return false;
  }
  for (const auto& [path, isFolder] : items) {
    if (isFolder) {
      fs::create_directory(folder / path, problem);
    } else {
      fs::rename(staging / path, folder / path, problem);
    }
    if (problem) return false;
  }
  return true;
}

}  // namespace

bool extractArchive(zip_t* archive, const std::string& folder, const ExtractLimits& limits,
                    std::string& reason) {
  const auto entries = checkedEntries(archive, limits, reason);
  if (!entries) return false;
  std::error_code problem;
  const bool made = fs::create_directories(folder, problem);
  const auto failed = [&](const std::string& why) {
    reason = why;
    if (made) fs::remove(folder, problem);
    return false;
  };
  if (problem) return failed(folder + ": " + problem.message());
  std::string broken;
  {
    const PrivateFolder staging(folder);
    if (!staging.good()) {
      broken = folder + ": can't be written";
    } else {
      for (const ArchiveEntry& entry : *entries) {
        if (!broken.empty()) break;
        if (!extractEntry(archive, entry, staging.path())) broken = entry.path + ": can't be extracted";
      }
      if (broken.empty() && !moveIntoPlace(staging.path(), folder))
        broken = folder + ": something stands in the way";
    }
  }
  return broken.empty() || failed(broken);
}

}  // namespace platform
