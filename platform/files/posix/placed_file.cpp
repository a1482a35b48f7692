#include "platform/files/placed_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace platform {

namespace {

/// Calls until all is done, the end of the file is met or the system refuses.
template <class Byte, class Call>
bool inPieces(Byte* bytes, size_t count, int64_t place, Call call) {
  while (count > 0) {
    const ssize_t done = call(bytes, count, place);
    if (done < 0 && errno == EINTR) continue;
    if (done <= 0) return done == 0;
    bytes += done;
    place += done;
    count -= static_cast<size_t>(done);
  }
  return true;
}

}  // namespace

PlacedFile::PlacedFile(const std::string& path) : descriptor_(::open(path.c_str(), O_RDWR | O_CLOEXEC)) {
  struct stat about {};
  if (descriptor_ >= 0 && fstat(descriptor_, &about) == 0) size_ = about.st_size;
}

PlacedFile::~PlacedFile() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

bool PlacedFile::read(int64_t place, void* bytes, size_t count) const {
  return inPieces(static_cast<char*>(bytes), count, place,
                  [&](char* to, size_t size, int64_t at) { return pread(descriptor_, to, size, at); });
}

bool PlacedFile::write(int64_t place, const void* bytes, size_t count) {
  return inPieces(
      static_cast<const char*>(bytes), count, place,
      [&](const char* from, size_t size, int64_t at) { return pwrite(descriptor_, from, size, at); });
}

}  // namespace platform
