#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "platform/process/process.h"
#include "platform/text/utf.h"

namespace {

/// Holds a shared lock for as long as the library is loaded: whoever asks for the exclusive one learns
/// that the process lives, and the kernel takes the lock back however the process ends.
struct Mark {
  int descriptor = -1;
  ~Mark() {
    if (descriptor >= 0) close(descriptor);
  }
};

std::string runtimeFolder() {
  const char* const folder = std::getenv("XDG_RUNTIME_DIR");
  return folder && *folder ? folder : "/tmp";
}

}  // namespace

void markProcess(const std::wstring& name) {
  static Mark mark;
  if (mark.descriptor >= 0) return;
  const std::string file = runtimeFolder() + "/" + toUtf8(name) + "." + std::to_string(getuid()) + ".lock";
  mark.descriptor = open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
  if (mark.descriptor >= 0) flock(mark.descriptor, LOCK_SH | LOCK_NB);
}

int processNumber() { return getpid(); }

unsigned lastSystemError() { return static_cast<unsigned>(errno); }
void clearSystemError() { errno = 0; }
