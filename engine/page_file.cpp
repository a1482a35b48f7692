#include "engine/page_file.h"

#include "engine/errors/errors.h"

namespace {

int64_t placeOf(uint32_t number) { return static_cast<int64_t>(number - 1) * FileHeader::pageSize; }

}  // namespace

PageFile::PageFile(const std::string& path) : file_(path) {
  if (!file_.good()) fail(diskOrNetwork);
  count_ = static_cast<uint32_t>(file_.size() / FileHeader::pageSize);
}

Page PageFile::read(uint32_t number) const {
  Page page{};
  if (!file_.read(placeOf(number), page.data(), page.size())) fail(diskOrNetwork);
  return page;
}

void PageFile::write(uint32_t number, const Page& page) {
  if (file_.write(placeOf(number), page.data(), page.size())) return;
  fail(platform::lastFileProblem() == platform::FileProblem::diskFull ? diskFull : diskOrNetwork);
}

uint32_t PageFile::append(const Page& page) {
  write(count_ + 1, page);
  return ++count_;
}
