#include "platform/files/whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "platform/files/native_path.h"
#include "platform/files/posix/hidden_file.h"

namespace platform {

namespace {

mode_t modeFor(const std::string& target) {
  struct stat present;
  return stat(target.c_str(), &present) == 0 ? present.st_mode & 07777 : modeOfNewFile();
}

std::optional<std::string> refused(int reason) {
  errno = reason;
  return std::nullopt;
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
  file_ = std::make_unique<HiddenFile>(splitPath(target_).folder, HiddenFile::Name::atTheEnd);
}

WholeFile::~WholeFile() = default;

bool WholeFile::good() const { return file_ && file_->good(); }

bool WholeFile::write(std::string_view bytes) {
  while (good() && !bytes.empty()) {
    const ssize_t written = ::write(file_->descriptor(), bytes.data(), bytes.size());
    if (written >= 0) {
      bytes.remove_prefix(static_cast<size_t>(written));
    } else if (errno != EINTR) {
      file_->abandon();
    }
  }
  return good();
}

bool WholeFile::takeAttributesOf(int descriptor) {
  struct stat about {};
  if (!good() || fstat(descriptor, &about) != 0) return false;
  mode_ = about.st_mode & 07777;
  const timespec times[] = {about.st_atim, about.st_mtim};
  return futimens(file_->descriptor(), times) == 0;
}

bool WholeFile::commit() { return file_ && file_->replace(target_, mode_); }

std::optional<std::string> readWhole(const std::string& path) {
  const Descriptor file(openPlainFile(path));
  struct stat about {};
  if (!file.good() || fstat(file.number, &about) != 0) return std::nullopt;
  // It may grow meanwhile, and what the system makes up as it is read has no length.
  constexpr size_t step = 1 << 16;
  std::string bytes;
  size_t length = 0;
  for (bytes.resize(static_cast<size_t>(about.st_size) + 1);;) {
    const ssize_t count = read(file.number, bytes.data() + length, bytes.size() - length);
    if (count < 0 && errno != EINTR) return std::nullopt;
    if (count == 0) break;
    if (count > 0) length += static_cast<size_t>(count);
    if (length == bytes.size()) bytes.resize(length + step);
  }
  bytes.resize(length);
  return bytes;
}

int openPlainFile(const std::string& path) {
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  struct stat info;
  if (descriptor < 0 || (fstat(descriptor, &info) == 0 && S_ISREG(info.st_mode))) return descriptor;
  close(descriptor);
  errno = EINVAL;
  return -1;
}

void syncFolder(const std::string& folder) {
  const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  fsync(descriptor);
  close(descriptor);
}

}  // namespace platform
