#include "platform/files/file_facts.h"

#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <iterator>

namespace platform {

FileProblem fileProblemOf(int systemError) {
  switch (systemError) {
    case 0:
      return FileProblem::none;
    case ENOENT:
      return FileProblem::notFound;
    case EEXIST:
      return FileProblem::exists;
    case EACCES:
    case EROFS:
    case EPERM:
      return FileProblem::noRight;
    case ENOSPC:
    case EDQUOT:
      return FileProblem::diskFull;
    case EIO:
    case ESTALE:
      return FileProblem::disk;
    default:
      return FileProblem::badPath;
  }
}

FileProblem lastFileProblem() { return fileProblemOf(errno); }

std::optional<FileFacts> factsOf(const std::string& path) {
  struct stat about {};
  if (stat(path.c_str(), &about) != 0) return std::nullopt;
  constexpr int64_t second = 1'000'000'000;
  return FileFacts{S_ISREG(about.st_mode)   ? FileFacts::Kind::plain
                   : S_ISDIR(about.st_mode) ? FileFacts::Kind::folder
                                            : FileFacts::Kind::other,
                   about.st_size,
                   {about.st_dev, about.st_ino},
                   about.st_mtim.tv_sec * second + about.st_mtim.tv_nsec};
}

bool mayUse(const std::string& path, FileUse use) {
  return access(path.c_str(), use == FileUse::read ? R_OK : R_OK | W_OK) == 0;
}

bool isOnNetwork(const std::string& path) {
  constexpr uint32_t networkKinds[] = {0x6969 /* NFS */,      0x517B /* SMB */,      0xFF534D42 /* CIFS */,
                                       0xFE534D42 /* SMB2 */, 0x65735546 /* FUSE */, 0x01021997 /* 9P */};
  struct statfs system {};
  if (statfs(path.c_str(), &system) != 0) return true;
  const auto kind = static_cast<uint32_t>(system.f_type);
  return std::find(std::begin(networkKinds), std::end(networkKinds), kind) != std::end(networkKinds);
}

}  // namespace platform
