// Archives with anything in them: extraction stays inside its folder, within the limits, and leaves nothing
// when it fails.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "platform/archive/archive_writer.h"

namespace {

namespace fs = std::filesystem;

constexpr platform::ExtractLimits limits{20, 100'000};

void check(bool holds) {
  if (!holds) std::abort();
}

/// In memory where the machine has such a place, so that bringing files to the disk costs nothing.
fs::path makeFolder() {
  const char* const base = fs::exists("/dev/shm") ? "/dev/shm" : "/tmp";
  std::string name = std::string(base) + "/zarbo-fuzz-XXXXXX";
  check(mkdtemp(name.data()) != nullptr);
  return name;
}

struct Folder {
  fs::path path = makeFolder();
  ~Folder() { fs::remove_all(path); }
};

size_t countOf(const fs::path& folder) {
  return static_cast<size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

uint64_t bytesIn(const fs::path& folder) {
  uint64_t bytes = 0;
  for (const fs::directory_entry& each : fs::recursive_directory_iterator(folder)) {
    check(!each.is_symlink());
    if (each.is_regular_file()) bytes += each.file_size();
  }
  return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const Folder folder;
  const fs::path archive = folder.path / "a.zip", target = folder.path / "out";
  std::ofstream(archive, std::ios::binary)
      .write(reinterpret_cast<const char*>(data), static_cast<long>(size));
  {
    platform::ArchiveWriter reader;
    const bool extracted = reader.open(archive.wstring()) && reader.extractAll(target.wstring(), limits);
    check(countOf(folder.path) == (extracted ? 2 : 1));
    if (extracted) check(bytesIn(target) <= limits.bytes);
  }
  fs::remove_all(target);
  return 0;
}
