#include "engine/mdb/jet_file.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "engine/jet_kind.h"
#include "engine/mdb/jet_values.h"
#include "engine/text/collation.h"

namespace mdb {
namespace {

constexpr size_t mostLongBytes = size_t{1} << 30;

/// Also hidden tables behind attachments, and what forms keep for themselves.
bool isSystems(const MdbCatalogEntry& entry) {
  constexpr unsigned systemFlags = 0x80000002;
  const std::string_view name = entry.object_name;
  return static_cast<unsigned>(entry.flags) & systemFlags || name.starts_with("MSys") ||
         name.starts_with("~");
}

std::string converted(const std::string& codePage, ByteView bytes) {
  const iconv_t conversion = iconv_open("UTF-8//TRANSLIT", codePage.c_str());
  if (conversion == reinterpret_cast<iconv_t>(-1)) throw JetError("texts in code page " + codePage);
  std::string result(bytes.size() * 4, '\0');
  char* from = const_cast<char*>(reinterpret_cast<const char*>(bytes.data()));
  char* to = result.data();
  size_t fromLeft = bytes.size(), toLeft = result.size();
  while (fromLeft > 0 && iconv(conversion, &from, &fromLeft, &to, &toLeft) == static_cast<size_t>(-1)) {
    if (toLeft < 3 || fromLeft == 0) break;
    std::memcpy(to, "\xEF\xBF\xBD", 3);  // U+FFFD for a byte that is no character
    to += 3, toLeft -= 3, ++from, --fromLeft;
  }
  iconv_close(conversion);
  result.resize(result.size() - toLeft);
  return result;
}

}  // namespace

JetFile::JetFile(const std::string& path) : path_(path) {
  if (!isJetFile(path)) throw JetError("'" + path + "' is no Jet database");
  handle_.reset(mdb_open(path.c_str(), MDB_NOFLAGS));
  readCatalog();
}

JetFile::JetFile(std::span<uint8_t> content) : path_("content") {
  handle_.reset(mdb_open_buffer(content.data(), content.size(), MDB_NOFLAGS));
  readCatalog();
}

void JetFile::readCatalog() {
  if (!handle_)
    throw JetError("'" + path_ + "' can't be opened: its first page is not one of a Jet database");
  if (!mdb_read_catalog(handle_.get(), MDB_ANY)) throw JetError("the catalog of '" + path_ + "'");
  for (unsigned i = 0; i < handle_->num_catalog; ++i) {
    auto* entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(handle_->catalog, i));
    objects_.push_back({entry->object_name, entry->object_type, isSystems(*entry), entry});
  }
  if (objects_.empty()) throw JetError("the catalog of '" + path_ + "' is empty; the file may be encrypted");
}

const char* JetFile::versionName() const {
  constexpr const char* names[] = {"Jet 3", "Jet 4", "ACE 12", "ACE 14", "ACE 15", "ACE 16", "ACE 17"};
  return handle_->f->jet_version < std::size(names) ? names[handle_->f->jet_version]
                                                    : "of an unknown version";
}

const JetObject* JetFile::findTable(std::string_view name) const {
  for (const JetObject& object : objects_) {
    if (object.kind == MDB_TABLE && sameText(object.name, name)) return &object;
  }
  return nullptr;
}

ByteView JetFile::page(uint32_t number) {
  const auto size = handle_->fmt->pg_size;
  if (mdb_read_alt_pg(handle_.get(), number) != size) throw JetError("page " + std::to_string(number));
  return {handle_->alt_pg_buf, static_cast<size_t>(size)};
}

std::string JetFile::text(ByteView bytes) const {
  if (!isJet3()) return textOfJet4(bytes);
  const int codePage = handle_->f->code_page;
  return converted("CP" + std::to_string(codePage > 0 ? codePage : 1252), bytes);
}

// The lower byte is the row's number on its page.
ByteView JetFile::rowAt(uint32_t pageAndRow) {
  const uint32_t number = pageAndRow >> 8;
  const size_t row = pageAndRow & 0xFF;
  const ByteView bytes = page(number);
  const auto table = static_cast<size_t>(handle_->fmt->row_count_offset);
  constexpr uint16_t offsetMask = 0x1FFF;
  if (row >= numberAt<uint16_t>(bytes, table))
    throw JetError("row " + std::to_string(row) + " of page " + std::to_string(number));
  const size_t start = numberAt<uint16_t>(bytes, table + 2 + 2 * row) & offsetMask;
  const size_t end = row == 0 ? bytes.size() : numberAt<uint16_t>(bytes, table + 2 * row) & offsetMask;
  if (end < start) throw JetError("row " + std::to_string(row) + " of page " + std::to_string(number));
  return partOf(bytes, start, end - start);
}

std::string JetFile::longValue(ByteView head) {
  constexpr size_t headSize = 12;
  const auto word = numberAt<uint32_t>(head, 0);
  const size_t length = word & 0x3FFFFFFF;
  if (length > mostLongBytes) throw JetError("a long value's length");
  const auto asText = [](ByteView bytes) {
    return std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  };
  if (word & 0x80000000) {  // stands in the row itself
    const ByteView inside = partOf(head, headSize, head.size() - headSize);
    return asText(inside.first(std::min(length, inside.size())));
  }
  auto place = numberAt<uint32_t>(head, 4);
  if (word & 0x40000000) {  // in one row of another page
    const ByteView row = rowAt(place);
    return asText(partOf(row, 0, length));
  }
  std::string value;  // in a chain of rows, each with the place of the next before it
  while (place != 0 && value.size() < length) {
    const ByteView row = rowAt(place);
    if (row.size() <= 4) throw JetError("a long value's chain");
    value += asText(row.subspan(4));
    place = numberAt<uint32_t>(row, 0);
  }
  if (value.size() < length) throw JetError("the rest of a long value");
  value.resize(length);
  return value;
}

}  // namespace mdb
