#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace platform {

/// What an extraction may make before it is given up.
struct ExtractLimits {
  uint64_t entries = 100'000;
  /// Of all extracted files together.
  uint64_t bytes = uint64_t{2} << 30;
};

/// One zip archive, being written or read. Each operation answers false on failure; the reason of the
/// last one can be saved. An archive file appears, or is replaced, only by `writeAndClose`.
class ArchiveWriter {
 public:
  ArchiveWriter();
  ~ArchiveWriter();
  ArchiveWriter(const ArchiveWriter&) = delete;
  ArchiveWriter& operator=(const ArchiveWriter&) = delete;

  /// Names that would be refused are mended instead: one that is there already gets a number, "plan (2).dwg",
  /// and a colon becomes "_". To be set before the archive is created.
  void setMendNames(bool mend);
  bool create(const std::wstring& path);
  /// With `keepPath`, a file or a folder with all that is in it, under its own path without the root;
  /// otherwise a file under its bare name. A name that couldn't be extracted again is refused: one that the
  /// archive has already, without regard to case, or with a colon in it.
  bool append(const std::wstring& path, bool keepPath);
  /// An archive without entries is written, too.
  bool writeAndClose();

  bool open(const std::wstring& path);
  /// All or nothing: an archive that is damaged, encrypted or beyond the limits, that holds links or
  /// special files, one name twice, or a name that leads out of the folder, changes nothing there.
  bool extractAll(const std::wstring& folder, const ExtractLimits& limits = {});

  /// Drops what was not written.
  void close();
  /// "place: reason", "" before the first failure.
  const std::string& lastError() const;
  bool saveLastError(const std::wstring& file) const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace platform
