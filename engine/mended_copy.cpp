#include "engine/mended_copy.h"

#include <algorithm>
#include <filesystem>

#include "engine/catalog.h"

MendedCopy::MendedCopy(const Database& damaged, std::string path) : path_(std::move(path)) {
  copyPages(damaged);
  mendHeader(FileHeader::Journal::WriteAhead);
  takeOverLog(logName(damaged.path()));
  mendHeader();
  RecoveredTables found;
  {
    PageFile file(path_);
    found = recoverTables(file);
    if (found.tables.empty()) fail(notADatabase, damaged.path());
    mendTrees(file, found.tables);
  }
  mendHeader();  // the file has grown
  forgetSchema();
  writeSchema(found);
  database_ = std::make_unique<Database>(path_, Database::Mode::Read);
}

// A log that killed or living processes have beside the damaged file belongs to it: its pages go into the
// copy.
void MendedCopy::takeOverLog(const std::string& log) {
  const auto facts = platform::factsOf(log);
  if (!facts || facts->size == 0) return;
  std::filesystem::copy_file(log, logName(path_));
  {
    const Database merged(path_, Database::Mode::Write);
    // Whatever the pages are like: the first look at them opens the log, and leaving it needs no more.
    sqlite3_exec(merged.handle(), "PRAGMA schema_version", nullptr, nullptr, nullptr);
    sqlite3_wal_checkpoint_v2(merged.handle(), "main", SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
  }
  std::filesystem::remove(logName(path_));
  std::filesystem::remove(logIndexName(path_));
}

// What can't be read is left empty.
void MendedCopy::copyPages(const Database& damaged) {
  const auto facts = platform::factsOf(damaged.path());
  if (!facts) fail(diskOrNetwork);
  PageFile copy(path_);
  for (int64_t place = 0; place < facts->size; place += FileHeader::pageSize) {
    Page page{};
    damaged.readBytes(place, page.data(), static_cast<int>(page.size()));
    copy.append(page);
  }
}

void MendedCopy::mendHeader(FileHeader::Journal journal) {
  PageFile copy(path_);
  Page page = copy.read(1);
  FileHeader header;
  std::copy_n(page.begin(), FileHeader::size, header.bytes());
  header.mend(copy.count(), journal);
  std::copy_n(header.bytes(), FileHeader::size, page.begin());
  copy.write(1, page);
}

// The pages of what isn't in the new schema are not used again, since they may be rows' after all.
void MendedCopy::forgetSchema() {
  PageFile copy(path_);
  const Page page = copy.read(1);
  FileHeader header;
  std::copy_n(page.begin(), FileHeader::size, header.bytes());
  header.forgetFreePages();
  Page empty{};
  std::copy_n(header.bytes(), FileHeader::size, empty.begin());
  empty[FileHeader::size] = leafPage;
  empty[FileHeader::size + 5] = FileHeader::pageSize >> 8;  // where content begins: behind the end
  copy.write(1, empty);
}

// Tables as they lie in the file, without rules and indexes, which the new file makes anew.
void MendedCopy::writeSchema(const RecoveredTables& found) {
  Database database(path_, Database::Mode::Write);
  database.tolerateDamagedSchema();
  database.execute("PRAGMA journal_mode=OFF", Access::Write);
  database.execute("PRAGMA synchronous=OFF", Access::Write);
  createSystemTables(database);
  // The first counter makes the table of all.
  database.execute("CREATE TABLE zb_counter(x INTEGER PRIMARY KEY AUTOINCREMENT)", Access::Write);
  for (const auto& [stored, last] : found.lastRows) {
    Statement counter(database.handle(), "INSERT INTO sqlite_sequence VALUES(?, ?)", Access::Write, 0);
    counter.bind(1, stored);
    counter.bind(2, last);
    counter.step();
  }
  size_t place = 0;
  for (const auto& [key, description] : found.objects) {
    restoreDescription(database, description);
    if (key.first != 't') continue;
    const StoredTable& table = found.tables[place++];
    const std::string& stored = valueOf(description, "zb_tables", 1)->bytes;
    Statement entry(database.handle(), "INSERT INTO sqlite_schema VALUES('table', ?1, ?1, ?2, ?3)",
                    Access::Write, 0);
    const std::string sql = plainStorage(description);
    entry.bind(1, stored);
    entry.bind(2, int64_t{table.root});
    entry.bind(3, sql);
    entry.step();
  }
}
