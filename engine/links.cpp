#include "engine/catalog.h"
#include "engine/compact.h"
#include "engine/description.h"

/// Linked tables: tables of other database files, attached to the connection when the first of them is asked
/// for.

namespace {

// The guards of relations of an older file name their database, which SQLite refuses once it is attached: a
// short connection of the file's own makes them anew. What else is wrong with it shows when it is attached.
void renewOldRelations(const std::string& path) {
  try {
    const char* const old = "SELECT 1 FROM sqlite_schema WHERE type = 'trigger' AND instr(sql, '\"main\".')";
    if (!Statement(Database(path, Database::Mode::Read).handle(), old, Access::Read, 0).step()) return;
    Database file(path, Database::Mode::Write);
    if (file.examine() != Database::Health::Good || !isOurDatabase(file)) return;
    DatabaseCatalog(file).renewRelations();
  } catch (const jet::Failure&) {
  }
}

}  // namespace

bool isLinked(const jet::Table& table) { return table.schema != "main"; }

void DatabaseCatalog::readLinks() {
  links_.clear();
  linkedTables_.clear();
  Statement known(database_.handle(), "SELECT 1 FROM sqlite_schema WHERE name = 'zb_links'", Access::Read, 0);
  if (!known.step()) return;  // a file without links doesn't have the table
  Statement rows(database_.handle(), "SELECT name, file, foreign_name FROM zb_links", Access::Read, 0);
  while (rows.step()) {
    Link link{std::string(rows.text(0)), std::string(rows.text(1)), std::string(rows.text(2))};
    links_.emplace(link.name, std::move(link));
  }
}

// Forgets what is known of linked files that changed or are gone.
void DatabaseCatalog::refreshLinks() {
  for (auto& [path, file] : linkedFiles_) {
    if (!file.attached) continue;
    const bool gone = !platform::factsOf(path) || database_.fileIdentity(path) != file.identity;
    if (!gone && database_.schemaVersion(file.schema.c_str()) == file.cookie) continue;
    if (gone) {
      database_.forgetStatements();
      database_.detach(file.schema);
      file.attached = false;
    }
    file.tables.clear();
    file.cookie = 0;
    linkedTables_.clear();
    ++generation_;
  }
}

void DatabaseCatalog::databaseReopened() {
  loaded_ = false;
  linkedFiles_.clear();
  linkedTables_.clear();
}

const DatabaseCatalog::LinkedFile& DatabaseCatalog::linkedFile(const std::string& path) {
  LinkedFile& file = linkedFiles_[path];
  if (file.schema.empty()) file.schema = "link" + std::to_string(linkedFiles_.size());
  if (!file.attached) {
    renewOldRelations(path);
    database_.attach(path, file.schema);
    file.attached = true;
    file.identity = database_.fileIdentity(path);
  }
  if (file.cookie == 0) {
    file.tables = readTables(file.schema);
    file.cookie = database_.schemaVersion(file.schema.c_str());
  }
  return file;
}

const jet::Table* DatabaseCatalog::findLinkedTable(std::string_view name) {
  const auto link = links_.find(name);
  if (link == links_.end()) return nullptr;
  if (const auto known = linkedTables_.find(name); known != linkedTables_.end()) return &known->second;
  const LinkedFile& file = linkedFile(link->second.file);
  const auto found = file.tables.find(link->second.foreignName);
  if (found == file.tables.end()) fail(tableNotFound, link->second.foreignName);
  jet::Table table = found->second;
  table.name = link->second.name;
  return &linkedTables_.emplace(table.name, std::move(table)).first->second;
}

std::vector<DatabaseCatalog::Link> DatabaseCatalog::links() const {
  std::vector<Link> result;
  for (const auto& [name, link] : links_) result.push_back(link);
  return result;
}

void DatabaseCatalog::requireLinkable(const Link& link) {
  if (!linkedFile(link.file).tables.contains(link.foreignName)) fail(tableNotFound, link.foreignName);
}

void DatabaseCatalog::createLink(const Link& link) {
  changing([&] {
    requireName(link.name);
    if (hasTable(link.name) || findQuery(link.name)) fail(jet::objectExists, link.name);
    run(linksTable);
    run("INSERT INTO zb_links VALUES(?, ?, ?)",
        {Stored::of(link.name), Stored::of(link.file), Stored::of(link.foreignName)});
    bumpSchema();
  });
}

bool DatabaseCatalog::changeLink(std::string_view name, std::string_view newName) {
  if (!links_.contains(name)) return false;
  if (newName.empty()) {
    run("DELETE FROM zb_links WHERE name = ?", {Stored::of(name)});
  } else {
    run("UPDATE zb_links SET name = ?2 WHERE name = ?1", {Stored::of(name), Stored::of(newName)});
  }
  bumpSchema();
  return true;
}

// Links are rows: only a change of the schema's counter makes other connections read them anew.
void DatabaseCatalog::bumpSchema() {
  run("CREATE TABLE zb_changed(x INTEGER) STRICT");
  run("DROP TABLE zb_changed");
}
