#include "platform/files/files.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>

#include "platform/files/native_path.h"
#include "platform/files/posix/hidden_file.h"
#include "platform/files/whole_file.h"

namespace platform {

namespace {

bool hasNoWriter(mode_t mode) { return (mode & 0222) == 0; }

bool isReadOnlyFile(const std::string& path) {
  struct stat info;
  return stat(path.c_str(), &info) == 0 && hasNoWriter(info.st_mode);
}

bool sameFile(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

bool copyContents(int source, WholeFile& target) {
  std::array<char, 1 << 16> buffer;
  for (;;) {
    const ssize_t count = read(source, buffer.data(), buffer.size());
    if (count == 0) return true;
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 || !target.write({buffer.data(), static_cast<size_t>(count)})) return false;
  }
}

bool copyNative(const std::string& source, const std::string& target) {
  const Descriptor from(openPlainFile(source));
  struct stat info, present;
  if (from.number < 0 || fstat(from.number, &info) != 0) return false;
  if (stat(target.c_str(), &present) == 0 && sameFile(info, present)) return false;
  WholeFile copy(target);
  if (!copy.good() || !copyContents(from.number, copy)) return false;
  return copy.takeAttributesOf(from.number) && copy.commit();
}

}  // namespace

bool copyFile(const std::wstring& source, const std::wstring& target) {
  return copyNative(nativePath(source), nativePath(target));
}

bool moveFile(const std::wstring& source, const std::wstring& target) {
  const std::string from = nativePath(source), to = nativePath(target);
  if (moveWithoutReplacing(from.c_str(), to.c_str())) return true;
  if (errno != EXDEV || access(to.c_str(), F_OK) == 0) return false;
  if (!copyNative(from, to)) return false;
  if (unlink(from.c_str()) == 0) return true;
  unlink(to.c_str());
  return false;
}

bool deleteFile(const std::wstring& path) {
  const std::string native = nativePath(path);
  return !isReadOnlyFile(native) && unlink(native.c_str()) == 0;
}

bool makeFolder(const std::wstring& path) { return mkdir(nativePath(path).c_str(), 0777) == 0; }

bool removeFolder(const std::wstring& path) { return rmdir(nativePath(path).c_str()) == 0; }

bool folderExists(const std::wstring& path) {
  struct stat info;
  return stat(nativePath(path).c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

bool fileExists(const std::wstring& path) {
  struct stat info;
  return stat(nativePath(path).c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

std::optional<std::chrono::system_clock::time_point> modificationTime(const std::wstring& path) {
  const Descriptor file(openPlainFile(nativePath(path)));
  struct stat info;
  if (file.number < 0 || fstat(file.number, &info) != 0) return std::nullopt;
  return std::chrono::system_clock::time_point(
      std::chrono::seconds(info.st_mtim.tv_sec) +
      std::chrono::duration_cast<std::chrono::system_clock::duration>(
          std::chrono::nanoseconds(info.st_mtim.tv_nsec)));
}

bool isReadOnly(const std::wstring& path) {
  struct stat info;
  return stat(nativePath(path).c_str(), &info) != 0 || hasNoWriter(info.st_mode);
}

}  // namespace platform
