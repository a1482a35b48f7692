// Reads any bytes as a snapshot. Checksums would keep all but whole files out, so that chunks with right
// checksums are also made of the bytes: contents of classes, variables and objects behind their lengths.
#include <cstddef>
#include <cstdint>

#include "host/filing/snapshot.h"
#include "host/filing/snapshot_chunks.h"

namespace {

/// Takes a length of three bytes and as much content, as far as there is any.
std::string_view takeContent(std::string_view& bytes) {
  size_t length = 0;
  for (size_t i = 0; i < 3 && !bytes.empty(); ++i, bytes.remove_prefix(1)) {
    length = length << 8 | static_cast<unsigned char>(bytes[0]);
  }
  const std::string_view content = bytes.substr(0, length);
  bytes.remove_prefix(content.size());
  return content;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string_view bytes(reinterpret_cast<const char*>(data), size);
  AcDbDatabase drawing(false);
  host::FilingReport report;
  host::readSnapshot(bytes, drawing, report);
  std::string snapshot;
  host::appendSnapshotHead(snapshot);
  for (const char* const tag : {"CLAS", "VARS", "OBJS", "OBJS"}) {
    host::appendChunk(snapshot, tag, takeContent(bytes));
  }
  host::appendChunk(snapshot, "ENDS", "");
  AcDbDatabase other(false);
  host::readSnapshot(snapshot, other, report);
  return 0;
}
