#include "platform/files/whole_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include "platform/files/native_path.h"

namespace platform {

namespace {

mode_t modeOfNewFile() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

mode_t modeFor(const std::string& target) {
  struct stat present;
  return stat(target.c_str(), &present) == 0 ? present.st_mode & 07777 : modeOfNewFile();
}

std::optional<std::string> refused(int reason) {
  errno = reason;
  return std::nullopt;
}

constexpr std::string_view hiddenPrefix = ".zarbo-";
constexpr std::string_view sixLetters = "XXXXXX";  // which `mkostemp` fills in

std::string hiddenStart(const std::string& target) {
  return splitPath(target).folder + "/" + std::string(hiddenPrefix);
}

bool isNumber(std::string_view text) {
  return !text.empty() &&
         std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isdigit(c); });
}

/// Six letters, or the number of a process and a count.
bool isHiddenName(std::string_view name) {
  if (!name.starts_with(hiddenPrefix)) return false;
  name.remove_prefix(hiddenPrefix.size());
  const size_t dash = name.find('-');
  if (dash == std::string_view::npos) return name.size() == sixLetters.size();
  return isNumber(name.substr(0, dash)) && isNumber(name.substr(dash + 1));
}

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
  for (auto each = std::filesystem::directory_iterator(folder, ignored);
       each != std::filesystem::directory_iterator(); each.increment(ignored)) {
    if (isHiddenName(each->path().filename().string())) removeIfLeft(each->path().string());
  }
}

/// Before it was locked, another process may have taken it for one that was left.
bool isThere(int descriptor) {
  struct stat about;
  return fstat(descriptor, &about) == 0 && about.st_nlink > 0;
}

/// A locked file under a hidden name, which replaces `path`; -1, and no name, on failure.
int createHidden(const std::string& start, std::string& path) {
  constexpr int mostTries = 100;
  for (int tries = 0; tries < mostTries; ++tries) {
    path = start + std::string(sixLetters);
    const int descriptor = mkostemp(path.data(), O_CLOEXEC);
    if (descriptor < 0) break;
    flock(descriptor, LOCK_EX);
    if (isThere(descriptor)) return descriptor;
    close(descriptor);
  }
  path.clear();
  return -1;
}

/// Locked before it gets a name, so that nobody takes it for one that was left.
int createNameless(const std::string& folder) {
  const int descriptor = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
  if (descriptor >= 0) flock(descriptor, LOCK_EX);
  return descriptor;
}

}  // namespace

std::optional<std::string> replaceableFile(const std::string& path) {
  if (splitPath(path).name.empty()) return refused(EINVAL);
  struct stat present;
  if (lstat(path.c_str(), &present) != 0) return path;
  const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.c_str(), nullptr), &std::free);
  if (!real || stat(real.get(), &present) != 0) return std::nullopt;
  if (!S_ISREG(present.st_mode)) return refused(S_ISDIR(present.st_mode) ? EISDIR : EINVAL);
  if ((present.st_mode & 0222) == 0) return refused(EACCES);
  return real.get();
}

WholeFile::WholeFile(const std::string& target) {
  const std::optional<std::string> place = replaceableFile(target);
  if (!place) return;
  target_ = *place;
  mode_ = modeFor(target_);
  const std::string folder = splitPath(target_).folder;
  removeLeftFiles(folder);
  descriptor_ = createNameless(folder);
  if (descriptor_ < 0) descriptor_ = createHidden(hiddenStart(target_), temporary_);
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

// A name can't be given over a file that is there, so the nameless file gets a hidden one first.
bool WholeFile::giveName() {
  static std::atomic<unsigned> count = 0;
  const std::string self = "/proc/self/fd/" + std::to_string(descriptor_);
  const std::string start = hiddenStart(target_) + std::to_string(getpid()) + "-";
  while (temporary_.empty()) {
    const std::string name = start + std::to_string(++count);
    if (linkat(AT_FDCWD, self.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0) {
      temporary_ = name;
    } else if (errno != EEXIST) {
      return false;
    }
  }
  return true;
}

bool WholeFile::commit() {
  if (!good()) return false;
  const bool stored = fchmod(descriptor_, mode_) == 0 && fsync(descriptor_) == 0 && giveName() &&
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
  if (!temporary_.empty()) unlink(temporary_.c_str());
  errno = reason;
}

std::optional<std::string> readWhole(const std::string& path) {
  const int descriptor = openPlainFile(path);
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

int openPlainFile(const std::string& path) {
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  struct stat info;
  if (descriptor < 0 || (fstat(descriptor, &info) == 0 && S_ISREG(info.st_mode))) return descriptor;
  close(descriptor);
  return -1;
}

void syncFolder(const std::string& folder) {
  const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  fsync(descriptor);
  close(descriptor);
}

}  // namespace platform
