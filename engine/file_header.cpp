#include "engine/file_header.h"

#include <cstring>

namespace {

constexpr char name[16] = "SQLite format 3";

// Places in the header.
enum : size_t {
  pageSizePlace = 16,
  writeVersion = 18,
  readVersion = 19,
  reservedBytes = 20,
  payloadFractions = 21,
  changeCounter = 24,
  pageCount = 28,
  firstFree = 32,
  freeCount = 36,
  schemaFormat = 44,
  largestRoot = 52,
  textEncoding = 56,
  incrementalVacuum = 64,
  unused = 72,
  pageCountValidFor = 92,
};

}  // namespace

bool FileHeader::hasName() const { return std::memcmp(bytes(), name, sizeof name) == 0; }

FileHeader::Journal FileHeader::journal() const {
  if (bytes_[writeVersion] == 1 && bytes_[readVersion] == 1) return Journal::Rollback;
  if (bytes_[writeVersion] == 2 && bytes_[readVersion] == 2) return Journal::WriteAhead;
  return Journal::Unknown;
}

uint32_t FileHeader::firstFreePage() const { return bigEndian(bytes() + firstFree); }

void FileHeader::forgetFreePages() {
  put(firstFree, 0);
  put(freeCount, 0);
}

void FileHeader::put(size_t place, uint32_t value) {
  for (size_t i = 0; i < 4; ++i) bytes_[place + i] = static_cast<unsigned char>(value >> (24 - 8 * i));
}

void FileHeader::mend(uint32_t pages, Journal journal) {
  std::memcpy(bytes(), name, sizeof name);
  bytes_[pageSizePlace] = pageSize >> 8;
  bytes_[pageSizePlace + 1] = 0;
  bytes_[writeVersion] = bytes_[readVersion] = journal == Journal::WriteAhead ? 2 : 1;
  bytes_[reservedBytes] = 0;
  constexpr unsigned char fractions[] = {64, 32, 32};
  std::memcpy(bytes() + payloadFractions, fractions, sizeof fractions);
  put(pageCount, pages);
  put(pageCountValidFor, bigEndian(bytes() + changeCounter));
  if (firstFreePage() > pages) forgetFreePages();
  put(schemaFormat, 4);
  put(largestRoot, 0);
  put(textEncoding, 1);
  put(incrementalVacuum, 0);
  std::memset(bytes() + unused, 0, pageCountValidFor - unused);
}
