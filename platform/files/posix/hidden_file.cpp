#include "platform/files/posix/hidden_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <random>
#include <string_view>
#include <vector>

#include "platform/files/whole_file.h"

namespace platform {

namespace {

constexpr std::string_view hiddenPrefix = ".zarbo-";
constexpr std::string_view digits = "0123456789abcdefghijklmnopqrstuvwxyz";
constexpr size_t digitCount = 12;

std::string hiddenName() {
  std::random_device random;
  std::string name(hiddenPrefix);
  for (size_t i = 0; i < digitCount; ++i) name += digits[random() % digits.size()];
  return name;
}

bool isHiddenName(const std::string& name) {
  return name.size() == hiddenPrefix.size() + digitCount && name.starts_with(hiddenPrefix) &&
         name.find_first_not_of(digits, hiddenPrefix.size()) == std::string::npos;
}

void removeIfLeft(const std::string& path) {
  const Descriptor file(open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  struct stat about {};
  const bool ours =
      file.good() && fstat(file.number, &about) == 0 && S_ISREG(about.st_mode) && about.st_uid == geteuid();
  if (ours && flock(file.number, LOCK_EX | LOCK_NB) == 0) unlink(path.c_str());
}

void removeLeftFiles(const std::string& folder) {
  std::error_code ignored;
  std::vector<std::string> left;
  for (std::filesystem::directory_iterator each(folder, ignored), end; !ignored && each != end;
       each.increment(ignored)) {
    if (isHiddenName(each->path().filename().string())) left.push_back(each->path().string());
  }
  for (const std::string& each : left) removeIfLeft(each);
}

/// Before it was locked, another process may have taken it for one that was left.
bool hasName(int descriptor) {
  struct stat about {};
  return fstat(descriptor, &about) == 0 && about.st_nlink > 0;
}

bool moveOver(const char* source, const char* target) { return rename(source, target) == 0; }

}  // namespace

HiddenFile::HiddenFile(const std::string& folder, Name name) : folder_(folder) {
  removeLeftFiles(folder);
  if (name == Name::atTheEnd) {
    // Locked before it gets a name, so that nobody takes it for one that was left.
    file_.number = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
    if (good()) flock(file_.number, LOCK_EX);
  }
  if (!good()) createNamed();
}

// Where nothing can be locked, nothing is taken for a leftover either.
void HiddenFile::createNamed() {
  do {
    file_.close();
    path_ = folder_ + "/" + hiddenName();
    file_.number = open(path_.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, 0600);
    if (good()) flock(file_.number, LOCK_EX | LOCK_NB);
    if (!good() && errno != EEXIST) return path_.clear();
  } while (!good() || !hasName(file_.number));
}

// A name can't be given over a file that is there, so the nameless file gets a hidden one first.
bool HiddenFile::giveName() {
  const std::string self = "/proc/self/fd/" + std::to_string(file_.number);
  while (path_.empty()) {
    const std::string name = folder_ + "/" + hiddenName();
    if (linkat(AT_FDCWD, self.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0) {
      path_ = name;
    } else if (errno != EEXIST) {
      return false;
    }
  }
  return true;
}

bool HiddenFile::settle(const std::string& target, mode_t mode, bool (*move)(const char*, const char*)) {
  const bool settled = good() && fchmod(file_.number, mode) == 0 && fsync(file_.number) == 0 && giveName() &&
                       move(path_.c_str(), target.c_str());
  if (!settled) {
    abandon();
    return false;
  }
  path_.clear();
  file_.close();
  syncFolder(folder_);
  return true;
}

bool HiddenFile::replace(const std::string& target, mode_t mode) { return settle(target, mode, moveOver); }

bool HiddenFile::appear(const std::string& target, mode_t mode) {
  return settle(target, mode, moveWithoutReplacing);
}

void HiddenFile::abandon() {
  const int reason = errno;
  if (!path_.empty()) unlink(path_.c_str());
  path_.clear();
  file_.close();
  errno = reason;
}

mode_t modeOfNewFile() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

bool moveWithoutReplacing(const char* source, const char* target) {
  if (renameat2(AT_FDCWD, source, AT_FDCWD, target, RENAME_NOREPLACE) == 0) return true;
  if (errno != EINVAL && errno != ENOSYS) return false;
  // A file system that can't do it in one step: a file can have both names for a moment, a folder can't.
  if (link(source, target) == 0) return unlink(source) == 0;
  if (errno == EEXIST || access(target, F_OK) == 0) return errno = EEXIST, false;
  return rename(source, target) == 0;
}

}  // namespace platform
