#include "tests/support/jet_writer.h"

#include <cstring>
#include <stdexcept>

#include "platform/text/utf.h"

namespace jet_writer {
namespace {

using Bytes = std::vector<uint8_t>;
constexpr size_t pageSize = 4096, rowCountPlace = 12, rowTablePlace = 14;

template <class Number>
void append(Bytes& bytes, Number number) {
  uint8_t raw[sizeof number];
  std::memcpy(raw, &number, sizeof number);
  for (const uint8_t byte : raw) bytes.push_back(byte);
}
template <class Number>
void put(Bytes& bytes, size_t place, Number number) {
  std::memcpy(bytes.data() + place, &number, sizeof number);
}
void append(Bytes& bytes, const Bytes& more) {
  for (const uint8_t byte : more) bytes.push_back(byte);
}

Bytes utf16(const std::string& text) {
  Bytes bytes;
  for (const wchar_t c : fromUtf8(text)) {
    const auto code = static_cast<uint32_t>(c);
    if (code >= 0x10000) append(bytes, static_cast<uint16_t>(0xD7C0 + (code >> 10)));
    append(bytes, static_cast<uint16_t>(code >= 0x10000 ? 0xDC00 + (code & 0x3FF) : code));
  }
  return bytes;
}

// As the format's own writer: compressed when that is shorter.
Bytes textBytes(const std::string& text) {
  Bytes compressed{0xFF, 0xFE};
  for (const wchar_t c : fromUtf8(text)) {
    if (c == 0 || c > 0xFF) return utf16(text);
    compressed.push_back(static_cast<uint8_t>(c));
  }
  return text.size() > 2 ? compressed : utf16(text);
}

bool isVariable(Type type) { return type == text || type == binary || type == memo || type == longBinary; }

int fixedSize(Type type) {
  switch (type) {
    case byte:
      return 1;
    case integer:
      return 2;
    case longInteger:
    case single:
    case complex:
      return 4;
    case currency:
    case real:
    case date:
      return 8;
    case guid:
      return 16;
    case decimal:
      return 17;
    default:
      return 0;
  }
}

Bytes fixedBytes(Type type, const Value& value) {
  Bytes bytes;
  if (const auto* raw = std::get_if<std::string>(&value)) bytes.assign(raw->begin(), raw->end());
  if (const auto* whole = std::get_if<int64_t>(&value)) append(bytes, *whole);
  if (const auto* number = std::get_if<double>(&value)) {
    if (type == single) {
      append(bytes, static_cast<float>(*number));
    } else {
      append(bytes, *number);
    }
  }
  bytes.resize(static_cast<size_t>(fixedSize(type)));
  return bytes;
}

// The properties of a table's columns, as MSysObjects keeps them.
std::string propertyBytes(const Table& table) {
  Bytes names, all{'M', 'R', '2', 0};
  std::vector<std::string> known;
  const auto numberOf = [&](const std::string& name) {
    for (size_t i = 0; i < known.size(); ++i) {
      if (known[i] == name) return i;
    }
    known.push_back(name);
    const Bytes text = utf16(name);
    append(names, static_cast<uint16_t>(text.size()));
    append(names, text);
    return known.size() - 1;
  };
  Bytes blocks;
  for (const Column& column : table.columns) {
    if (column.properties.empty()) continue;
    Bytes block;
    const Bytes columnName = utf16(column.name);
    append(block, static_cast<uint32_t>(6 + columnName.size()));
    append(block, static_cast<uint16_t>(columnName.size()));
    append(block, columnName);
    for (const auto& [name, value] : column.properties) {
      const bool isFlag = value == "yes" || value == "no";
      const Bytes content = isFlag ? Bytes{static_cast<uint8_t>(value == "yes" ? 0xFF : 0)} : utf16(value);
      append(block, static_cast<uint16_t>(8 + content.size()));
      block.push_back(0);
      block.push_back(isFlag ? yesNo : text);
      append(block, static_cast<uint16_t>(numberOf(name)));
      append(block, static_cast<uint16_t>(content.size()));
      append(block, content);
    }
    append(blocks, static_cast<uint32_t>(6 + block.size()));
    append(blocks, uint16_t{1});
    append(blocks, block);
  }
  if (known.empty()) return "";
  append(all, static_cast<uint32_t>(6 + names.size()));
  append(all, uint16_t{0x80});
  append(all, names);
  append(all, blocks);
  return {all.begin(), all.end()};
}

void rc4(uint8_t* bytes, size_t count, const Bytes& key) {
  uint8_t state[256];
  for (int i = 0; i < 256; ++i) state[i] = static_cast<uint8_t>(i);
  for (int i = 0, j = 0; i < 256; ++i) {
    j = (j + state[i] + key[static_cast<size_t>(i) % key.size()]) & 255;
    std::swap(state[i], state[j]);
  }
  for (size_t n = 0, i = 0, j = 0; n < count; ++n) {
    i = (i + 1) & 255;
    j = (j + state[i]) & 255;
    std::swap(state[i], state[j]);
    bytes[n] ^= state[(state[i] + state[j]) & 255];
  }
}

Bytes emptyDataPage(uint32_t owner) {
  Bytes page(pageSize);
  page[0] = page[1] = 1;
  put(page, 4, owner);
  return page;
}

size_t freeBytes(const Bytes& page) {
  uint16_t count, start = pageSize;
  std::memcpy(&count, page.data() + rowCountPlace, 2);
  if (count > 0) std::memcpy(&start, page.data() + rowTablePlace + 2 * (count - 1), 2);
  return start - (rowTablePlace + 2 * size_t{count});
}

constexpr uint32_t ownerOfLongValues = 0x4C41564C;  // "LVAL"

}  // namespace

File::File() : pages_(4, Bytes(pageSize)) {
  objects_ = {"MSysObjects",
              {{"Id", longInteger},
               {"ParentId", longInteger},
               {"Name", text, 510},
               {"Type", integer},
               {"Flags", longInteger},
               {"Database", memo},
               {"Connect", memo},
               {"ForeignName", text, 510},
               {"LvProp", longBinary}},
              {},
              {}};
  relations_ = {"MSysRelationships",
                {{"ccolumn", longInteger},
                 {"grbit", longInteger},
                 {"icolumn", longInteger},
                 {"szColumn", text, 510},
                 {"szObject", text, 510},
                 {"szReferencedColumn", text, 510},
                 {"szReferencedObject", text, 510},
                 {"szRelationship", text, 510}},
                {},
                {}};
  queries_ = {"MSysQueries",
              {{"Attribute", byte},
               {"Expression", memo},
               {"Flag", integer},
               {"Name1", text, 510},
               {"Name2", text, 510},
               {"ObjectId", longInteger},
               {"Order", binary, 510}},
              {},
              {}};
}

uint32_t File::newPage() {
  pages_.emplace_back(pageSize);
  return static_cast<uint32_t>(pages_.size() - 1);
}

void File::addRelation(const std::string& name, int flags, const std::string& table,
                       const std::string& column, const std::string& foreignTable,
                       const std::string& foreignColumn) {
  relations_.rows.push_back(
      {int64_t{1}, int64_t{flags}, int64_t{0}, column, table, foreignColumn, foreignTable, name});
}

void File::addQuery(const std::string& name,
                    const std::vector<std::tuple<int, int, std::string, std::string, std::string>>& parts) {
  const int id = nextId_++;
  objects_.rows.push_back({int64_t{id}, int64_t{0}, name, int64_t{5}, int64_t{0}, {}, {}, {}, {}});
  uint8_t order = 0;
  const auto orNull = [](const std::string& value) { return value.empty() ? Value() : Value(value); };
  for (const auto& [clause, flag, name1, name2, expression] : parts) {
    queries_.rows.push_back({int64_t{clause}, orNull(expression), int64_t{flag}, orNull(name1), orNull(name2),
                             int64_t{id}, std::string{'\0', static_cast<char>(++order)}});
  }
}

void File::addObject(const std::string& name, int type, const std::string& database,
                     const std::string& foreignName) {
  objects_.rows.push_back(
      {int64_t{nextId_++}, int64_t{0}, name, int64_t{type}, int64_t{0}, database, {}, foreignName, {}});
}

void File::add(const Table& table) {
  const uint32_t page = newPage();
  writeTable(table, page, 0);
}

void File::writeTable(const Table& table, uint32_t page, int flags) {
  if (page != 2) {
    const std::string properties = propertyBytes(table);
    objects_.rows.push_back({int64_t{page},
                             int64_t{0},
                             table.name,
                             int64_t{1},
                             int64_t{flags},
                             {},
                             {},
                             {},
                             properties.empty() ? Value() : Value(properties)});
  }
  Bytes definition(63);
  definition[0] = 2, definition[1] = 1;
  put(definition, 16, static_cast<uint32_t>(table.rows.size()));
  put(definition, 20, table.lastCounter);
  definition[24] = 1;
  definition[40] = flags ? 0x53 : 0x4E;
  uint16_t variables = 0;
  for (const Column& column : table.columns)
    variables = static_cast<uint16_t>(variables + isVariable(column.type));
  put(definition, 41, static_cast<uint16_t>(table.columns.size()));
  put(definition, 43, variables);
  put(definition, 45, static_cast<uint16_t>(table.columns.size()));
  put(definition, 47, static_cast<uint32_t>(table.indexes.size()));
  put(definition, 51, static_cast<uint32_t>(table.indexes.size()));
  const uint32_t map = usageMap(writeRows(table, page));
  put(definition, 55, map);
  put(definition, 59, map);
  definition.resize(definition.size() + 12 * table.indexes.size());
  uint16_t variable = 0, offset = 0, number = 0;
  for (const Column& column : table.columns) {
    Bytes entry(25);
    entry[0] = column.type;
    put(entry, 5, number);
    put(entry, 7, isVariable(column.type) ? variable++ : uint16_t{0});
    put(entry, 9, number++);
    entry[11] = static_cast<uint8_t>(column.precision), entry[12] = static_cast<uint8_t>(column.scale);
    entry[15] = static_cast<uint8_t>((isVariable(column.type) ? 2 : 3) | (column.counter ? 4 : 0));
    put(entry, 21, isVariable(column.type) ? uint16_t{0} : offset);
    offset = static_cast<uint16_t>(offset + fixedSize(column.type));
    put(entry, 23, static_cast<uint16_t>(column.size ? column.size : fixedSize(column.type)));
    append(definition, entry);
  }
  const auto appendName = [&](const std::string& name) {
    const Bytes bytes = utf16(name);
    append(definition, static_cast<uint16_t>(bytes.size()));
    append(definition, bytes);
  };
  for (const Column& column : table.columns) appendName(column.name);
  for (const Index& index : table.indexes) {
    Bytes entry(52);
    for (size_t i = 0; i < 10; ++i) {
      const bool used = i < index.columns.size();
      put(entry, 4 + 3 * i, static_cast<uint16_t>(used ? index.columns[i].first : 0xFFFF));
      entry[6 + 3 * i] = used && !index.columns[i].second ? 1 : 2;
    }
    entry[46] = index.flags;
    append(definition, entry);
  }
  for (size_t i = 0; i < table.indexes.size(); ++i) {
    Bytes entry(28);
    put(entry, 4, static_cast<uint32_t>(i));
    put(entry, 8, static_cast<uint32_t>(i));
    entry[23] = table.indexes[i].kind;
    append(definition, entry);
  }
  for (const Index& index : table.indexes) appendName(index.name);
  append(definition, uint16_t{0xFFFF});
  put(definition, 8, static_cast<uint32_t>(definition.size()));
  // What doesn't fit goes on behind the 8 bytes of head of further pages.
  size_t done = std::min(pageSize, definition.size());
  place(page, 0, {definition.begin(), definition.begin() + static_cast<long>(done)});
  for (uint32_t last = page; done < definition.size();) {
    const uint32_t next = newPage();
    put(pages_[last], 4, next);
    const size_t count = std::min(pageSize - 8, definition.size() - done);
    Bytes more{2, 1, 0, 0, 0, 0, 0, 0};
    more.insert(more.end(), definition.begin() + static_cast<long>(done),
                definition.begin() + static_cast<long>(done + count));
    place(next, 0, more);
    done += count;
    last = next;
  }
}

void File::place(uint32_t page, size_t offset, const Bytes& bytes) {
  std::copy(bytes.begin(), bytes.end(), pages_[page].begin() + static_cast<long>(offset));
}

uint32_t File::addRowToPage(Bytes& page, const Bytes& row) {
  uint16_t count, end = pageSize;
  std::memcpy(&count, page.data() + rowCountPlace, 2);
  if (count > 0) std::memcpy(&end, page.data() + rowTablePlace + 2 * (count - 1), 2);
  const auto start = static_cast<uint16_t>(end - row.size());
  std::copy(row.begin(), row.end(), page.begin() + start);
  put(page, rowTablePlace + 2 * size_t{count}, start);
  put(page, rowCountPlace, static_cast<uint16_t>(count + 1));
  return count;
}

std::vector<uint32_t> File::writeRows(const Table& table, uint32_t owner) {
  std::vector<uint32_t> pages;
  for (const Row& row : table.rows) {
    const Bytes bytes = rowBytes(table, row);
    if (pages.empty() || freeBytes(pages_[pages.back()]) < bytes.size() + 2) {
      pages.push_back(newPage());
      pages_[pages.back()] = emptyDataPage(owner);
    }
    addRowToPage(pages_[pages.back()], bytes);
  }
  return pages;
}

Bytes File::rowBytes(const Table& table, const Row& row) {
  Bytes bytes, nulls((table.columns.size() + 7) / 8);
  append(bytes, static_cast<uint16_t>(table.columns.size()));
  for (size_t i = 0; i < row.size(); ++i) {
    const Type type = table.columns[i].type;
    const auto* whole = std::get_if<int64_t>(&row[i]);
    const bool given = type == yesNo ? whole && *whole != 0 : row[i].index() != 0;
    if (given) nulls[i / 8] = static_cast<uint8_t>(nulls[i / 8] | 1 << i % 8);
    if (type != yesNo && !isVariable(type)) append(bytes, fixedBytes(type, row[i]));
  }
  std::vector<uint16_t> offsets;
  for (size_t i = 0; i < row.size(); ++i) {
    const Type type = table.columns[i].type;
    if (!isVariable(type)) continue;
    offsets.push_back(static_cast<uint16_t>(bytes.size()));
    const auto* content = std::get_if<std::string>(&row[i]);
    if (!content) continue;
    const Bytes raw =
        type == text || type == memo ? textBytes(*content) : Bytes(content->begin(), content->end());
    append(bytes, type == memo || type == longBinary ? longValue(raw) : raw);
  }
  if (!offsets.empty()) {
    append(bytes, static_cast<uint16_t>(bytes.size()));
    for (size_t i = offsets.size(); i-- > 0;) append(bytes, offsets[i]);
    append(bytes, static_cast<uint16_t>(offsets.size()));
  }
  append(bytes, nulls);
  return bytes;
}

// In the row, in a row of another page, or in a chain of such rows, by its length.
Bytes File::longValue(const Bytes& content) {
  constexpr size_t mostInRow = 64, mostOnPage = 4000;
  const auto length = static_cast<uint32_t>(content.size());
  Bytes head;
  if (content.size() <= mostInRow) {
    append(head, length | 0x80000000);
    head.resize(12);
    append(head, content);
    return head;
  }
  const bool chained = content.size() > mostOnPage;
  uint32_t next = 0;
  for (size_t end = content.size(); end > 0;) {
    const size_t count = chained ? (end - 1) % mostOnPage + 1 : end;
    Bytes row;
    if (chained) append(row, next);
    row.insert(row.end(), content.begin() + static_cast<long>(end - count),
               content.begin() + static_cast<long>(end));
    const uint32_t page = newPage();
    pages_[page] = emptyDataPage(ownerOfLongValues);
    next = page << 8 | addRowToPage(pages_[page], row);
    end -= count;
  }
  append(head, chained ? length : length | 0x40000000);
  append(head, next);
  head.resize(12);
  return head;
}

// Bits for 512 pages from the first one on, or for any number of pages on pages of their own.
uint32_t File::usageMap(const std::vector<uint32_t>& pages) {
  Bytes map;
  const uint32_t first = pages.empty() ? 0 : pages.front();
  if (pages.empty() || pages.back() - first < 512) {
    map.push_back(0);
    append(map, first);
    map.resize(5 + 64);
    for (const uint32_t page : pages)
      map[5 + (page - first) / 8] |= static_cast<uint8_t>(1 << (page - first) % 8);
  } else {
    constexpr uint32_t perPage = (pageSize - 4) * 8;
    map.push_back(1);
    for (uint32_t from = 0; from <= pages.back(); from += perPage) {
      const uint32_t bits = newPage();
      pages_[bits][0] = 5, pages_[bits][1] = 1;
      for (const uint32_t page : pages) {
        if (page >= from && page - from < perPage)
          pages_[bits][4 + (page - from) / 8] |= static_cast<uint8_t>(1 << (page - from) % 8);
      }
      append(map, bits);
    }
    map.resize(69);
  }
  const uint32_t page = newPage();
  pages_[page] = emptyDataPage(0);
  return page << 8 | addRowToPage(pages_[page], map);
}

std::vector<uint8_t> File::finish() {
  constexpr int systemFlag = INT32_MIN;
  writeTable(relations_, newPage(), systemFlag);
  writeTable(queries_, newPage(), systemFlag);
  objects_.rows.push_back(
      {int64_t{2}, int64_t{0}, objects_.name, int64_t{1}, int64_t{systemFlag}, {}, {}, {}, {}});
  writeTable(objects_, 2, systemFlag);
  Bytes& head = pages_[0];
  head[1] = 1;
  std::memcpy(head.data() + 4, "Standard Jet DB", 16);
  head[0x14] = 1;
  rc4(head.data() + 0x18, 128, {0xC7, 0xDA, 0x39, 0x6B});
  Bytes file;
  for (const Bytes& page : pages_) append(file, page);
  return file;
}

}  // namespace jet_writer
