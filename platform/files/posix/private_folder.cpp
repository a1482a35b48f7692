#include "platform/files/private_folder.h"

#include <cstdlib>
#include <filesystem>

namespace platform {

PrivateFolder::PrivateFolder(const std::string& parent) : path_(parent + "/.zarbo-XXXXXX") {
  if (!mkdtemp(path_.data())) path_.clear();
}

PrivateFolder::~PrivateFolder() {
  std::error_code ignored;
  if (good()) std::filesystem::remove_all(path_, ignored);
}

}  // namespace platform
