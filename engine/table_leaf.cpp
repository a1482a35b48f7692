#include "engine/table_leaf.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr size_t leafHeader = 8, pageSize = FileHeader::pageSize;
constexpr uint64_t largestPayload = 1'000'000'000, impossible = largestPayload + 1;

/// Bytes of a row that lie on its leaf; the others follow on pages of their own.
size_t localBytes(uint64_t payload) {
  constexpr uint64_t most = pageSize - 35, least = (pageSize - 12) * 32 / 255 - 23;
  if (payload <= most) return payload;
  const uint64_t filling = least + (payload - least) % (pageSize - 4);
  return filling <= most ? filling : least;
}

uint64_t bytesOfKind(uint64_t kind) {
  constexpr uint64_t sizes[] = {0, 1, 2, 3, 4, 6, 8, 8, 0, 0, impossible, impossible};
  return kind < 12 ? sizes[kind] : (kind - 12) / 2;
}

bool fits(uint64_t kind, const StoredColumn& column) {
  if (column.storage == Storage::RowNumber) return kind == 0;
  if (kind == 0) return !column.required;
  const bool isText = kind >= 13 && kind % 2 == 1, isBlob = kind >= 12 && kind % 2 == 0;
  switch (column.storage) {
    case Storage::Any:
      return true;
    case Storage::Text:
      return isText;
    case Storage::Blob:
      return isBlob;
    case Storage::Real:
      return kind <= 9;  // whole numbers are kept as such
    default:
      return kind <= 9 && kind != 7;
  }
}

/// A row that begins at a place and whose lengths agree with each other.
std::optional<LeafRow> rowAt(const Page& page, size_t place) {
  PageReader reader(page, place);
  const uint64_t payload = reader.number();
  const auto number = static_cast<int64_t>(reader.number());
  if (!reader.good() || payload < 2 || payload > largestPayload) return std::nullopt;
  const size_t begin = reader.place(), local = localBytes(payload);
  const size_t size = std::max<size_t>(4, begin - place + local + (local < payload ? 4 : 0));
  if (place + size > pageSize) return std::nullopt;
  const uint64_t header = reader.number();
  if (header > payload) return std::nullopt;
  if (header <= local) {
    uint64_t values = 0;
    while (reader.good() && reader.place() < begin + header && values <= payload)
      values += bytesOfKind(reader.number());
    if (!reader.good() || reader.place() != begin + header || header + values != payload) return std::nullopt;
  }
  return LeafRow{number, place, size};
}

/// The rows that the page's pointers name, in their order; nothing where there is no row.
std::vector<std::optional<LeafRow>> namedRows(const Page& page, size_t header) {
  std::vector<std::optional<LeafRow>> rows(std::min<size_t>(twoBytes(&page[header + 3]), pageSize / 4));
  for (size_t i = 0; i < rows.size(); ++i) {
    if (const auto place = cellPlace(page, header, leafHeader, i)) rows[i] = rowAt(page, *place);
  }
  return rows;
}

/// Bytes of the page's list of free blocks; nothing when it is broken.
std::optional<size_t> freeBytes(const Page& page, size_t header) {
  size_t bytes = page[header + 7];
  for (size_t at = twoBytes(&page[header + 1]), before = 0; at != 0;) {
    if (at <= before || at + 4 > pageSize) return std::nullopt;
    bytes += twoBytes(&page[at + 2]);
    before = at;
    at = twoBytes(&page[at]);
  }
  return bytes;
}

bool isWhole(const Page& page, size_t header, const std::vector<std::optional<LeafRow>>& rows,
             const RowRange& range) {
  if (page[header] != leafPage || rows.size() != twoBytes(&page[header + 3])) return false;
  const size_t begin = twoBytes(&page[header + 5]);
  std::optional<size_t> taken = freeBytes(page, header);
  if (!taken || begin > pageSize || begin < header + leafHeader + 2 * rows.size()) return false;
  RowRange left = range;
  for (const auto& row : rows) {
    if (!row || row->place < begin || !left.contains(row->number)) return false;
    left.above = row->number;
    *taken += row->size;
  }
  return *taken == pageSize - begin;
}

/// The rows that most likely are where they should: the longest ascending series within the range.
std::vector<LeafRow> rowsInOrder(const std::vector<std::optional<LeafRow>>& rows, const RowRange& range) {
  struct Step {
    LeafRow row;
    size_t length = 1;
    std::optional<size_t> before;
  };
  std::vector<Step> steps;
  size_t longest = 0;
  for (const auto& row : rows) {
    if (!row || !range.contains(row->number)) continue;
    Step step{*row, 1, {}};
    // On a good page each row goes on with the series of all before it, and the search ends at once.
    for (size_t i = steps.size(); i-- > 0 && step.length <= steps[longest].length;) {
      if (steps[i].row.number >= row->number || steps[i].length < step.length) continue;
      step.length = steps[i].length + 1;
      step.before = i;
    }
    steps.push_back(step);
    if (step.length > steps[longest].length) longest = steps.size() - 1;
  }
  std::vector<LeafRow> series;
  if (steps.empty()) return series;
  for (std::optional<size_t> at = longest; at; at = steps[*at].before) series.push_back(steps[*at].row);
  std::reverse(series.begin(), series.end());
  return series;
}

/// Adds rows that no pointer leads to. Rows lie side by side from the page's end on, so that one that was
/// there touches another one or the end.
void addForgottenRows(const Page& page, size_t header, const StoredColumns& columns, const RowRange& range,
                      std::vector<LeafRow>& rows) {
  std::vector<LeafRow> possible;
  for (size_t place = header + leafHeader; place < pageSize; ++place) {
    const auto row = rowAt(page, place);
    if (row && range.contains(row->number) && fits(page, *row, columns)) possible.push_back(*row);
  }
  const auto touches = [&](const LeafRow& row) {
    return row.place + row.size == pageSize ||
           std::any_of(rows.begin(), rows.end(), [&](const LeafRow& each) {
             return each.place == row.place + row.size || each.place + each.size == row.place;
           });
  };
  const auto excludes = [](const LeafRow& row, const LeafRow& other) {
    return row.number == other.number ||
           (row.place < other.place + other.size && other.place < row.place + row.size);
  };
  for (bool grown = true; grown;) {
    grown = false;
    for (const LeafRow& row : possible) {
      if (!touches(row) ||
          std::any_of(rows.begin(), rows.end(), [&](const LeafRow& each) { return excludes(row, each); }))
        continue;
      rows.push_back(row);
      grown = true;
    }
  }
  std::sort(rows.begin(), rows.end(), [](const LeafRow& a, const LeafRow& b) { return a.number < b.number; });
}

/// All bytes of a row's record, also those on the pages where it goes on.
std::optional<std::string> recordOf(const PageFile& file, const Page& page, const LeafRow& row) {
  PageReader reader(page, row.place);
  const uint64_t payload = reader.number();
  reader.number();
  const size_t local = localBytes(payload);
  std::string bytes(reinterpret_cast<const char*>(&page[reader.place()]), local);
  if (local == payload) return bytes;
  uint32_t next = bigEndian(&page[reader.place() + local]);
  while (bytes.size() < payload) {
    if (next < 1 || next > file.count()) return std::nullopt;
    const Page more = file.read(next);
    next = bigEndian(more.data());
    bytes.append(reinterpret_cast<const char*>(&more[4]),
                 std::min<size_t>(pageSize - 4, payload - bytes.size()));
  }
  return bytes;
}

Stored valueOf(uint64_t kind, std::string_view bytes) {
  if (kind == 0) return {};
  if (kind == 8 || kind == 9) return Stored::of(static_cast<int64_t>(kind - 8));
  if (kind >= 12) {
    Stored value = Stored::of(bytes);
    if (kind % 2 == 0) value.kind = Stored::Kind::Blob;
    return value;
  }
  auto number = static_cast<uint64_t>(bytes.empty() || (bytes[0] & 0x80) == 0 ? 0 : -1);
  for (const char byte : bytes) number = number << 8 | static_cast<unsigned char>(byte);
  if (kind != 7) return Stored::of(static_cast<int64_t>(number));
  double real;
  std::memcpy(&real, &number, sizeof real);
  return Stored::of(real);
}

}  // namespace

uint64_t PageReader::number() {
  uint64_t value = 0;
  for (int i = 0; i < 9; ++i) {
    if (place_ >= page_.size()) {
      good_ = false;
      return 0;
    }
    const unsigned char byte = page_[place_++];
    if (i == 8) return value << 8 | byte;
    value = value << 7 | (byte & 0x7F);
    if (byte < 0x80) return value;
  }
  return value;
}

std::optional<size_t> cellPlace(const Page& page, size_t header, size_t headerSize, size_t cell) {
  const size_t pointer = header + headerSize + 2 * cell;
  if (pointer + 2 > page.size()) return std::nullopt;
  const size_t place = twoBytes(&page[pointer]);
  if (place < header + headerSize || place + 4 > page.size()) return std::nullopt;
  return place;
}

LeafContent readLeaf(const Page& page, size_t header, const StoredColumns& columns, const RowRange& range) {
  const auto named = namedRows(page, header);
  LeafContent content{rowsInOrder(named, range), isWhole(page, header, named, range)};
  if (!content.whole) addForgottenRows(page, header, columns, range, content.rows);
  return content;
}

void keepRows(Page& page, const std::vector<LeafRow>& rows) {
  const Page before = page;
  page.fill(0);
  size_t content = page.size(), pointer = leafHeader;
  const auto put = [&](size_t place, size_t value) {
    page[place] = static_cast<unsigned char>(value >> 8);
    page[place + 1] = static_cast<unsigned char>(value);
  };
  for (const LeafRow& row : rows) {
    if (content - row.size < pointer + 2) break;
    content -= row.size;
    std::copy_n(&before[row.place], row.size, &page[content]);
    put(pointer, content);
    pointer += 2;
  }
  page[0] = leafPage;
  put(3, (pointer - leafHeader) / 2);
  put(5, content);
}

bool fits(const Page& page, const LeafRow& row, const StoredColumns& columns) {
  PageReader reader(page, row.place);
  reader.number();
  reader.number();
  const size_t begin = reader.place();
  const uint64_t header = reader.number();
  size_t column = 0;
  for (; reader.good() && reader.place() < begin + header; ++column) {
    if (column >= columns.size() || !fits(reader.number(), columns[column])) return false;
  }
  return reader.good() && column == columns.size();
}

bool fits(const Page& page, const std::vector<LeafRow>& rows, const StoredColumns& columns) {
  const auto fitting =
      std::count_if(rows.begin(), rows.end(), [&](const LeafRow& row) { return fits(page, row, columns); });
  return 2 * static_cast<size_t>(fitting) >= rows.size();
}

std::vector<Stored> valuesOf(const PageFile& file, const Page& page, const LeafRow& row) {
  const std::optional<std::string> record = recordOf(file, page, row);
  if (!record) return {};
  std::vector<Stored> values;
  const auto next = [&](size_t& place) {
    uint64_t value = 0;
    for (int i = 0; i < 9 && place < record->size(); ++i) {
      const auto byte = static_cast<unsigned char>((*record)[place++]);
      if (i == 8) return value << 8 | byte;
      value = value << 7 | (byte & 0x7F);
      if (byte < 0x80) break;
    }
    return value;
  };
  size_t kindPlace = 0;
  size_t valuePlace = next(kindPlace);
  for (const size_t end = valuePlace; kindPlace < end && kindPlace < record->size();) {
    const uint64_t kind = next(kindPlace), size = bytesOfKind(kind);
    if (valuePlace > record->size() || size > record->size() - valuePlace) return {};
    values.push_back(valueOf(kind, std::string_view(*record).substr(valuePlace, size)));
    valuePlace += size;
  }
  return values;
}
