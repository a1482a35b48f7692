#include "platform/files/whole_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include "platform/files/native_path.h"

namespace platform {

namespace {

std::string behindLinks(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.c_str(), nullptr), &std::free);
  return real ? real.get() : path;
}

mode_t modeOfNewFile() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

mode_t modeFor(const std::string& target) {
  struct stat present;
  return stat(target.c_str(), &present) == 0 ? present.st_mode & 07777 : modeOfNewFile();
}

/// Names of growing files; `mkostemp` fills the X in.
constexpr std::string_view growingName = ".zarbo-XXXXXX";

/// Whoever grows a file holds a lock on it until the end of the process, so that one without a lock was
/// left by a process that was killed.
void removeIfLeft(const std::string& path) {
  const int descriptor = open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) return;
  struct stat about;
  const bool isFile = fstat(descriptor, &about) == 0 && S_ISREG(about.st_mode);
  if (isFile && flock(descriptor, LOCK_EX | LOCK_NB) == 0) unlink(path.c_str());
  close(descriptor);
}

void removeLeftFiles(const std::string& folder) {
  std::error_code ignored;
  const std::string_view prefix = growingName.substr(0, growingName.find('X'));
  for (auto each = std::filesystem::directory_iterator(folder, ignored);
       each != std::filesystem::directory_iterator(); each.increment(ignored)) {
    const std::string name = each->path().filename().string();
    if (name.size() == growingName.size() && name.starts_with(prefix)) removeIfLeft(each->path().string());
  }
}

/// Locked; -1 on failure.
int createGrowing(std::string& path) {
  const int descriptor = mkostemp(path.data(), O_CLOEXEC);
  if (descriptor >= 0) flock(descriptor, LOCK_EX);
  return descriptor;
}

/// Before it was locked, another process may have taken it for one that was left.
bool isThere(int descriptor) {
  struct stat about;
  return fstat(descriptor, &about) == 0 && about.st_nlink > 0;
}

}  // namespace

WholeFile::WholeFile(const std::string& target) : target_(behindLinks(target)), mode_(modeFor(target_)) {
  const SplitPath parts = splitPath(target_);
  if (parts.name.empty()) return;
  removeLeftFiles(parts.folder);
  constexpr int mostTries = 100;
  for (int tries = 0; tries < mostTries; ++tries) {
    temporary_ = parts.folder + "/" + std::string(growingName);
    descriptor_ = createGrowing(temporary_);
    if (descriptor_ < 0 || isThere(descriptor_)) return;
    close(descriptor_);
    descriptor_ = -1;
  }
}

WholeFile::~WholeFile() { abandon(); }

bool WholeFile::write(std::string_view bytes) {
  while (good() && !bytes.empty()) {
    const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
    if (written >= 0) {
      bytes.remove_prefix(static_cast<size_t>(written));
    } else if (errno != EINTR) {
      abandon();
    }
  }
  return good();
}

bool WholeFile::commit() {
  if (!good()) return false;
  const bool stored = fchmod(descriptor_, mode_) == 0 && fsync(descriptor_) == 0 &&
                      rename(temporary_.c_str(), target_.c_str()) == 0;
  if (!stored) {
    abandon();
    return false;
  }
  close(descriptor_);
  descriptor_ = -1;
  syncFolder(splitPath(target_).folder);
  return true;
}

void WholeFile::abandon() {
  if (!good()) return;
  const int reason = errno;
  close(descriptor_);
  descriptor_ = -1;
  unlink(temporary_.c_str());
  errno = reason;
}

std::optional<std::string> readWhole(const std::string& path) {
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return std::nullopt;
  std::string bytes;
  std::array<char, 1 << 16> buffer;
  ssize_t count;
  while ((count = read(descriptor, buffer.data(), buffer.size())) != 0) {
    if (count > 0) bytes.append(buffer.data(), static_cast<size_t>(count));
    if (count < 0 && errno != EINTR) break;
  }
  close(descriptor);
  return count == 0 ? std::optional(std::move(bytes)) : std::nullopt;
}

void syncFolder(const std::string& folder) {
  const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  fsync(descriptor);
  close(descriptor);
}

}  // namespace platform
