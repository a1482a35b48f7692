#include "platform/files/growing_file.h"

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

#include "platform/files/native_path.h"
#include "platform/files/whole_file.h"

namespace platform {

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

GrowingFile::GrowingFile(const std::string& target) : target_(target) {
  const fs::path folder = splitPath(target).folder;
  removeLeftovers(folder);
  struct stat attributes {};
  do {
    if (descriptor_ >= 0) ::close(descriptor_);
    path_ = (folder / hiddenName()).string();
    descriptor_ = ::open(path_.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, 0666);
    if (descriptor_ < 0 && errno != EEXIST) {
      failed();
      path_.clear();
      return;
    }
    // Where nothing can be locked, nothing is taken for a leftover either.
    if (descriptor_ >= 0) flock(descriptor_, LOCK_EX | LOCK_NB);
    // Another process may have come upon it before it was locked.
  } while (descriptor_ < 0 || fstat(descriptor_, &attributes) != 0 || attributes.st_nlink == 0);
}

GrowingFile::~GrowingFile() {
  if (!path_.empty()) ::unlink(path_.c_str());
  if (descriptor_ >= 0) ::close(descriptor_);
}

bool GrowingFile::failed() {
  error_ = errno;
  return false;
}

bool GrowingFile::appear() {
  if (error_ != 0) return false;
  if (fsync(descriptor_) != 0) return failed();
  if (::link(path_.c_str(), target_.c_str()) == 0) {
    ::unlink(path_.c_str());
  } else if (errno == EEXIST || ::rename(path_.c_str(), target_.c_str()) != 0) {  // without hard links
    return failed();
  }
  path_.clear();
  syncFolder(splitPath(target_).folder);
  return true;
}

}  // namespace platform
