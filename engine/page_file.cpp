#include "engine/page_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "engine/errors/errors.h"

PageFile::PageFile(const std::string& path) : descriptor_(::open(path.c_str(), O_RDWR | O_CLOEXEC)) {
  struct stat attributes {};
  if (descriptor_ < 0 || fstat(descriptor_, &attributes) != 0) fail(diskOrNetwork);
  count_ = static_cast<uint32_t>(attributes.st_size / FileHeader::pageSize);
}

PageFile::~PageFile() { ::close(descriptor_); }

Page PageFile::read(uint32_t number) const {
  Page page{};
  const off_t place = static_cast<off_t>(number - 1) * FileHeader::pageSize;
  if (pread(descriptor_, page.data(), page.size(), place) < 0) fail(diskOrNetwork);
  return page;
}

void PageFile::write(uint32_t number, const Page& page) {
  const off_t place = static_cast<off_t>(number - 1) * FileHeader::pageSize;
  if (pwrite(descriptor_, page.data(), page.size(), place) == static_cast<ssize_t>(page.size())) return;
  fail(errno == ENOSPC || errno == EDQUOT ? diskFull : diskOrNetwork);
}

uint32_t PageFile::append(const Page& page) {
  write(count_ + 1, page);
  return ++count_;
}
