#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace host {

/// How a snapshot is put together: the mark, the format's version, and chunks up to one tagged "ENDS".
/// A chunk is a tag of four letters, the CRC-32 of tag, length and content, the length in 64 bits and
/// the content; numbers have their lowest byte first.

inline constexpr std::string_view snapshotMark = "\x89ZBDWG\r\n";
inline constexpr uint32_t snapshotVersion = 2;

struct SnapshotChunk {
  std::string_view tag, content;
};

void appendSnapshotHead(std::string& bytes);
void appendChunk(std::string& bytes, std::string_view tag, std::string_view content);

/// False with a problem when the bytes are cut off or changed; all checksums are looked at first.
bool splitSnapshot(std::string_view bytes, std::vector<SnapshotChunk>& chunks, uint32_t& version,
                   std::wstring& problem);

}  // namespace host
