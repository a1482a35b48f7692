#include "platform/files/growing_file.h"

#include "platform/files/native_path.h"
#include "platform/files/posix/hidden_file.h"

namespace platform {

GrowingFile::GrowingFile(const std::string& target)
    : target_(target),
      file_(std::make_unique<HiddenFile>(splitPath(target).folder, HiddenFile::Name::fromTheBeginning)) {
  if (!file_->good()) problem_ = lastFileProblem();
  path_ = file_->path();
}

GrowingFile::~GrowingFile() = default;

bool GrowingFile::appear() {
  if (problem_ != FileProblem::none) return false;
  if (file_->appear(target_, modeOfNewFile())) return true;
  problem_ = lastFileProblem();
  return false;
}

}  // namespace platform
