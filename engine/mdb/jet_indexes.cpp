#include <algorithm>

#include "engine/mdb/jet_table.h"

namespace mdb {
namespace {

// How a version lays out a table's definition, in bytes. Counts stand in the head; behind it lie an entry for
// each stored index, the columns, their names, the stored indexes, the named ones, and their names.
struct Layout {
  size_t columnCount, namedCount, storedCount;  // where the counts stand
  size_t head, rowCountEntry, column, storedIndex, storedPrefix, flags, namedIndex, namedPrefix, nameLength;
};
constexpr Layout jet3{25, 27, 31, 43, 8, 18, 39, 0, 38, 20, 0, 1};
constexpr Layout jet4{45, 47, 51, 63, 12, 25, 52, 4, 46, 28, 4, 2};

constexpr size_t mostIndexColumns = 10;
constexpr uint32_t mostIndexes = 1000;
constexpr uint16_t noColumn = 0xFFFF;
enum IndexFlag : uint8_t { unique = 0x01, ignoresNull = 0x02, required = 0x08 };
enum IndexKind : uint8_t { primaryKey = 1, ofRelation = 2 };

class DefinitionReader {
 public:
  DefinitionReader(ByteView bytes, const Layout& layout) : bytes_(bytes), layout_(layout) {}

  uint32_t count(size_t place) const {
    const auto count = numberAt<uint32_t>(bytes_, place);
    if (count > mostIndexes) throw JetError("the number of indexes");
    return count;
  }
  ByteView take(size_t length) {
    const ByteView part = partOf(bytes_, at_, length);
    at_ += length;
    return part;
  }
  ByteView takeName() {
    const ByteView length = take(layout_.nameLength);
    return take(layout_.nameLength == 1 ? length[0] : numberAt<uint16_t>(length, 0));
  }

 private:
  ByteView bytes_;
  const Layout& layout_;
  size_t at_ = 0;
};

jet::Index storedIndex(ByteView entry, const Layout& layout, const std::map<int, std::string>& columnNames) {
  jet::Index index;
  for (size_t i = 0; i < mostIndexColumns; ++i) {
    const size_t place = layout.storedPrefix + 3 * i;
    const auto number = numberAt<uint16_t>(entry, place);
    if (number == noColumn) continue;
    const auto name = columnNames.find(number);
    if (name == columnNames.end()) throw JetError("the fields of an index");
    index.columns.push_back({name->second, entry[place + 2] != 1});
  }
  const uint8_t flags = entry[layout.flags];
  index.unique = flags & unique;
  index.ignoreNull = flags & ignoresNull;
  index.required = flags & required;
  return index;
}

}  // namespace

std::vector<JetIndex> parseIndexes(ByteView definition, bool isJet3,
                                   const std::map<int, std::string>& columnNames,
                                   const std::function<std::string(ByteView)>& text) {
  const Layout& layout = isJet3 ? jet3 : jet4;
  DefinitionReader reader(definition, layout);
  const uint32_t named = reader.count(layout.namedCount), stored = reader.count(layout.storedCount);
  const size_t columns = numberAt<uint16_t>(definition, layout.columnCount);
  reader.take(layout.head + layout.rowCountEntry * stored + layout.column * columns);
  for (size_t i = 0; i < columns; ++i) reader.takeName();

  std::vector<jet::Index> storedIndexes;
  for (uint32_t i = 0; i < stored; ++i)
    storedIndexes.push_back(storedIndex(reader.take(layout.storedIndex), layout, columnNames));
  std::vector<JetIndex> indexes;
  for (uint32_t i = 0; i < named; ++i) {
    const ByteView entry = reader.take(layout.namedIndex);
    const auto number = numberAt<uint32_t>(entry, layout.namedPrefix + 4);
    if (number >= storedIndexes.size()) throw JetError("the number of an index");
    const uint8_t kind = entry[layout.namedPrefix + 19];
    indexes.push_back({storedIndexes[number], kind == ofRelation});
    indexes.back().index.primary = kind == primaryKey;
  }
  for (JetIndex& each : indexes) each.index.name = text(reader.takeName());
  return indexes;
}

}  // namespace mdb
