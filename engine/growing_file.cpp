#include "engine/growing_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <random>
#include <string_view>
#include <vector>

#include "engine/errors.h"
#include "platform/files/native_path.h"
#include "platform/files/whole_file.h"

namespace {

namespace fs = std::filesystem;

constexpr std::string_view hiddenPrefix = ".zarbodb-";
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

[[noreturn]] void failMaking(const std::string& target) {
  switch (errno) {
    case EEXIST:
      fail(databaseExists, target);
    case EACCES:
    case EROFS:
    case EPERM:
      fail(noRight, target);
    case ENOSPC:
    case EDQUOT:
      fail(diskFull);
    case EIO:
    case ESTALE:
      fail(diskOrNetwork);
    default:
      fail(badPath, target);
  }
}

// A file whose lock can be had is nobody's: the system gave it back when its process ended.
void removeIfLeft(const std::string& path) {
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) return;
  struct stat attributes {};
  const bool ours =
      fstat(descriptor, &attributes) == 0 && S_ISREG(attributes.st_mode) && attributes.st_uid == geteuid();
  if (ours && flock(descriptor, LOCK_EX | LOCK_NB) == 0) ::unlink(path.c_str());
  ::close(descriptor);
}

void removeLeftovers(const fs::path& folder) {
  std::error_code error;
  std::vector<std::string> left;
  for (fs::directory_iterator each(folder, error), end; !error && each != end; each.increment(error)) {
    if (isHiddenName(each->path().filename().string())) left.push_back(each->path().string());
  }
  std::for_each(left.begin(), left.end(), removeIfLeft);
}

}  // namespace

void requireNoFile(const std::string& path) {
  struct stat attributes {};
  if (::lstat(path.c_str(), &attributes) == 0) fail(databaseExists, path);
  if (errno != ENOENT) failMaking(path);
}

GrowingFile::GrowingFile(const std::string& target) : target_(target) {
  const fs::path folder = fs::path(target).parent_path();
  removeLeftovers(folder);
  struct stat attributes {};
  do {
    if (descriptor_ >= 0) ::close(descriptor_);
    path_ = (folder / hiddenName()).string();
    descriptor_ = ::open(path_.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, 0666);
    if (descriptor_ < 0 && errno != EEXIST) failMaking(target);
    // Where nothing can be locked, nothing is taken for a leftover either.
    if (descriptor_ >= 0) flock(descriptor_, LOCK_EX | LOCK_NB);
    // Another process may have come upon it before it was locked.
  } while (descriptor_ < 0 || fstat(descriptor_, &attributes) != 0 || attributes.st_nlink == 0);
}

GrowingFile::~GrowingFile() {
  if (!path_.empty()) ::unlink(path_.c_str());
  ::close(descriptor_);
}

void GrowingFile::appear() {
  if (fsync(descriptor_) != 0) fail(diskOrNetwork);
  if (::link(path_.c_str(), target_.c_str()) == 0) {
    ::unlink(path_.c_str());
  } else {
    if (errno == EEXIST) fail(databaseExists, target_);
    // A file system without hard links.
    if (::rename(path_.c_str(), target_.c_str()) != 0) failMaking(target_);
  }
  path_.clear();
  platform::syncFolder(platform::splitPath(target_).folder);
}
