#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "engine/file_header.h"
#include "platform/files/placed_file.h"

using Page = std::array<unsigned char, FileHeader::pageSize>;

/// The pages of a file of our own, which no database connection has open. Pages are numbered from 1. Failures
/// are those of the disk (3026, 3043).
class PageFile {
 public:
  explicit PageFile(const std::string& path);

  uint32_t count() const { return count_; }
  Page read(uint32_t number) const;
  void write(uint32_t number, const Page& page);
  /// The number of the new page.
  uint32_t append(const Page& page);

 private:
  platform::PlacedFile file_;
  uint32_t count_ = 0;
};
