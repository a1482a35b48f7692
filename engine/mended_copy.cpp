#include "engine/mended_copy.h"

#include <sys/stat.h>

#include <algorithm>
#include <map>
#include <vector>

#include "engine/tree_mender.h"

namespace {

StoredTable::Storage storageNamed(std::string_view type) {
  using Storage = StoredTable::Storage;
  if (type == "INTEGER") return Storage::Integer;
  if (type == "REAL") return Storage::Real;
  if (type == "TEXT") return Storage::Text;
  return type == "BLOB" ? Storage::Blob : Storage::Any;
}

// The greatest numbers that rows were given, by table.
std::map<std::string, int64_t> lastRows(Database& database) {
  std::map<std::string, int64_t> rows;
  try {
    Statement counters(database.handle(), "SELECT name, seq FROM sqlite_sequence", Access::Read, 0);
    while (counters.step()) rows[std::string(counters.text(0))] = counters.integer(1);
  } catch (const jet::Failure&) {
    rows.clear();
  }
  return rows;
}

std::vector<StoredTable::Storage> columnsOf(Database& database, const std::string& table) {
  std::vector<StoredTable::Storage> kinds;
  Statement columns(database.handle(), "SELECT type FROM pragma_table_info(?)", Access::Read, 0);
  columns.bind(1, table);
  while (columns.step()) kinds.push_back(storageNamed(columns.text(0)));
  return kinds;
}

std::vector<StoredTable> storedTables(Database& database) {
  std::vector<StoredTable> tables(1);
  tables[0].root = 1;  // the schema itself
  const std::map<std::string, int64_t> last = lastRows(database);
  try {
    Statement names(database.handle(), "SELECT name, rootpage FROM sqlite_schema WHERE type = 'table'",
                    Access::Read, 0);
    while (names.step()) {
      const std::string name(names.text(0));
      StoredTable table;
      table.root = static_cast<uint32_t>(names.integer(1));
      table.columns = columnsOf(database, name);
      if (const auto found = last.find(name); found != last.end()) table.lastRow = found->second;
      tables.push_back(std::move(table));
    }
  } catch (const jet::Failure&) {
    // The tables that stand before the damage are better than none.
  }
  return tables;
}

}  // namespace

MendedCopy::MendedCopy(const Database& damaged, std::string path) : path_(std::move(path)) {
  copyPages(damaged);
  mendHeader();
  mendTables();
  mendHeader();  // the file has grown
  database_ = std::make_unique<Database>(path_, Database::Mode::Read);
  database_->tolerateDamagedSchema();
}

// What can't be read is left empty.
void MendedCopy::copyPages(const Database& damaged) {
  struct stat attributes {};
  if (::stat(damaged.path().c_str(), &attributes) != 0) fail(diskOrNetwork);
  PageFile copy(path_);
  for (off_t place = 0; place < attributes.st_size; place += FileHeader::pageSize) {
    Page page{};
    damaged.readBytes(place, page.data(), static_cast<int>(page.size()));
    copy.append(page);
  }
}

void MendedCopy::mendHeader() {
  PageFile copy(path_);
  Page page = copy.read(1);
  FileHeader header;
  std::copy_n(page.begin(), FileHeader::size, header.bytes());
  header.mend(copy.count());
  std::copy_n(header.bytes(), FileHeader::size, page.begin());
  copy.write(1, page);
}

void MendedCopy::mendTables() {
  std::vector<StoredTable> tables;
  {
    Database database(path_, Database::Mode::Read);
    database.tolerateDamagedSchema();
    tables = storedTables(database);
  }
  PageFile copy(path_);
  mendTrees(copy, tables);
}
