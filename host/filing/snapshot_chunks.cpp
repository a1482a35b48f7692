#include "host/filing/snapshot_chunks.h"

#include <zlib.h>

#include <cstring>

namespace host {
namespace {

constexpr size_t tagSize = 4;
constexpr size_t headSize = tagSize + sizeof(uint32_t) + sizeof(uint64_t);

template <class T>
void append(std::string& bytes, T value) {
  bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

template <class T>
T valueAt(std::string_view bytes, size_t at) {
  T value;
  std::memcpy(&value, bytes.data() + at, sizeof value);
  return value;
}

uint32_t checksum(std::string_view tag, std::string_view content) {
  const uint64_t length = content.size();
  uLong sum = crc32_z(0, reinterpret_cast<const Bytef*>(tag.data()), tag.size());
  sum = crc32_z(sum, reinterpret_cast<const Bytef*>(&length), sizeof length);
  if (!content.empty()) sum = crc32_z(sum, reinterpret_cast<const Bytef*>(content.data()), content.size());
  return static_cast<uint32_t>(sum);
}

}  // namespace

void appendSnapshotHead(std::string& bytes) {
  bytes += snapshotMark;
  append(bytes, snapshotVersion);
}

void appendChunk(std::string& bytes, std::string_view tag, std::string_view content) {
  bytes += tag;
  append(bytes, checksum(tag, content));
  append(bytes, static_cast<uint64_t>(content.size()));
  bytes += content;
}

bool splitSnapshot(std::string_view bytes, std::vector<SnapshotChunk>& chunks, uint32_t& version,
                   std::wstring& problem) {
  problem = L"the snapshot is cut off";
  const size_t start = snapshotMark.size() + sizeof(uint32_t);
  if (bytes.size() < start) return false;
  version = valueAt<uint32_t>(bytes, snapshotMark.size());
  if (version > snapshotVersion) return true;
  for (std::string_view rest = bytes.substr(start);;) {
    if (rest.size() < headSize) return false;
    const std::string_view tag = rest.substr(0, tagSize);
    const auto sum = valueAt<uint32_t>(rest, tagSize);
    const auto length = valueAt<uint64_t>(rest, tagSize + sizeof(uint32_t));
    rest.remove_prefix(headSize);
    if (length > rest.size()) return false;
    const std::string_view content = rest.substr(0, length);
    if (sum != checksum(tag, content)) {
      problem = L"the snapshot is damaged: a checksum is wrong at byte " +
                std::to_wstring(content.data() - bytes.data());
      return false;
    }
    rest.remove_prefix(length);
    if (tag == "ENDS") return true;
    chunks.push_back({tag, content});
  }
}

}  // namespace host
