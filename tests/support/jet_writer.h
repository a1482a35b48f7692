#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <variant>
#include <vector>

/// Writes Jet 4 files for tests: as much of the format as readers of tables look at. Indexes are described
/// but hold no entries.
namespace jet_writer {

enum Type : uint8_t {
  yesNo = 1,
  byte = 2,
  integer = 3,
  longInteger = 4,
  currency = 5,
  single = 6,
  real = 7,
  date = 8,
  binary = 9,
  text = 10,
  longBinary = 11,
  memo = 12,
  guid = 15,
  decimal = 16,
  complex = 18,
};

struct Column {
  std::string name;
  Type type;
  int size = 0;  ///< bytes of a text or binary
  bool counter = false;
  int scale = 0, precision = 0;
  std::map<std::string, std::string> properties = {};  ///< values yes and no are of that type
};

struct Index {
  std::string name;
  std::vector<std::pair<int, bool>> columns;  ///< number, descending
  uint8_t flags = 0;                          ///< 1 unique, 2 ignores null, 8 required
  uint8_t kind = 0;                           ///< 1 primary key, 2 of a relation
};

/// Null; a number; UTF-8 text, or bytes, for the types that are bytes: also decimal and GUID.
using Value = std::variant<std::monostate, int64_t, double, std::string>;
using Row = std::vector<Value>;

struct Table {
  std::string name;
  std::vector<Column> columns;
  std::vector<Index> indexes = {};
  std::vector<Row> rows = {};
  int lastCounter = 0;
};

class File {
 public:
  File();
  void add(const Table& table);
  void addRelation(const std::string& name, int flags, const std::string& table, const std::string& column,
                   const std::string& foreignTable, const std::string& foreignColumn);
  /// Parts: clause, flag, name 1, name 2, expression.
  void addQuery(const std::string& name,
                const std::vector<std::tuple<int, int, std::string, std::string, std::string>>& parts);
  void addObject(const std::string& name, int type, const std::string& database = "",
                 const std::string& foreignName = "");
  /// The whole file; nothing is added afterwards.
  std::vector<uint8_t> finish();

 private:
  using Bytes = std::vector<uint8_t>;
  uint32_t newPage();
  void writeTable(const Table& table, uint32_t page, int flags);
  std::vector<uint32_t> writeRows(const Table& table, uint32_t owner);
  Bytes rowBytes(const Table& table, const Row& row);
  Bytes longValue(const Bytes& content);
  uint32_t addRowToPage(Bytes& page, const Bytes& row);
  uint32_t usageMap(const std::vector<uint32_t>& pages);
  void place(uint32_t page, size_t offset, const Bytes& bytes);

  std::vector<Bytes> pages_;
  Table objects_, relations_, queries_;
  int nextId_ = 0x10000000;
};

}  // namespace jet_writer
