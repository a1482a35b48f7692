#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// The first bytes of a database file, as SQLite's description of its file format lays them out.
class FileHeader {
 public:
  static constexpr int size = 100;
  /// Of every file that this engine makes.
  static constexpr uint32_t pageSize = 4096;

  enum class Journal { Rollback, WriteAhead, Unknown };

  unsigned char* bytes() { return bytes_.data(); }
  const unsigned char* bytes() const { return bytes_.data(); }

  /// Whether the file says of itself that it is a database.
  bool hasName() const;
  Journal journal() const;
  uint32_t firstFreePage() const;
  /// From then on the file has none that could be used again.
  void forgetFreePages();
  /// Puts back all that is the same in every file of this engine, for a file of so many pages.
  void mend(uint32_t pages, Journal journal);

 private:
  void put(size_t place, uint32_t value);
  std::array<unsigned char, size> bytes_{};
};

/// A number as the file keeps it.
inline uint32_t bigEndian(const unsigned char* bytes) {
  return static_cast<uint32_t>(bytes[0]) << 24 | static_cast<uint32_t>(bytes[1]) << 16 |
         static_cast<uint32_t>(bytes[2]) << 8 | bytes[3];
}
