#pragma once

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "engine/database.h"
#include "engine/jet_sql/catalog.h"
#include "engine/text/collation.h"

/// The tables that a database keeps about itself, made in an empty file. Part of the caller's transaction.
void createSystemTables(Database& database);

/// The schema of a database file: what the zb_ tables say, read once and kept until the file's schema
/// changes. A change of the schema, as `jet::Catalog` has it, is part of the caller's transaction.
class DatabaseCatalog : public jet::Catalog {
 public:
  /// A table of another database file that shows as one of this.
  struct Link {
    std::string name, file, foreignName;
  };

  /// A condition that a table's rows keep, as the dialect's rules have it.
  struct Rule {
    std::string table;
    std::string column;  ///< that the rule is of; "" for one of the table
    std::string condition;
    std::string message;  ///< told when it is broken; "" for one of the engine's
  };

  explicit DatabaseCatalog(Database& database) : database_(database) {}

  /// Reads again when the schema isn't the one that was read; to be called inside a read transaction, before
  /// `findTable` and the like.
  void refresh();
  /// Forgets everything: the database was opened anew.
  void databaseReopened();
  /// Another number each time that the schema was read anew.
  uint64_t generation() const { return generation_; }

  /// Of the file's own tables; `links` has the others.
  std::vector<std::string> tableNames() const;
  std::vector<Link> links() const;
  /// The index of that name, or the one whose only column has it; null when there is none.
  static const jet::Index* findIndex(const jet::Table& table, std::string_view name);
  static int columnPlace(const jet::Table& table, std::string_view name);
  std::vector<jet::Relation> relations();
  std::vector<std::string> queryNames();

  /// A linked table's file is attached when it is asked for; fails when it is gone (3024) or no database.
  const jet::Table* findTable(std::string_view name) override;
  bool hasTable(std::string_view name) override;
  std::optional<std::string> findQuery(std::string_view name) override;
  enum class IndexStorage { Now, Later };
  void createTable(const jet::Table& definition) override { createTable(definition, IndexStorage::Now); }
  /// With `Later` the indexes are described, and stored by `storeIndexes` when the rows are in.
  void createTable(const jet::Table& definition, IndexStorage storage);
  /// An index that is to be unique but whose values are not becomes a plain one, and is told.
  void storeIndexes(std::string_view table, const std::function<void(const jet::Index&)>& notUnique);
  /// The counter of `table`, or its hidden row number, goes on behind `last` at least.
  void continueCounter(std::string_view table, int64_t last);
  void renameTable(std::string_view table, std::string_view name);
  void dropTable(std::string_view table) override;
  void addColumn(std::string_view table, const jet::Column& column) override;
  void alterColumn(std::string_view table, const jet::Column& column) override;
  void renameColumn(std::string_view table, std::string_view column, std::string_view name);
  void dropColumn(std::string_view table, std::string_view column) override;
  void createIndex(std::string_view table, const jet::Index& index) override;
  void dropIndex(std::string_view table, std::string_view index) override;
  void createRelation(const jet::Relation& relation) override;
  void dropRelation(std::string_view table, std::string_view relation) override;
  /// Makes the guards of all relations anew: those of older files stand in the way of links to the file.
  void renewRelations();
  std::vector<Rule> rules();
  /// Fails for what is no rule, and (3316, 3317) when rows break it.
  void createRule(const Rule& rule);
  /// Fails when the other file or its table can't be reached.
  void requireLinkable(const Link& link);
  /// Doesn't look into the other file.
  void createLink(const Link& link);
  void createQuery(std::string_view name, std::string_view sql) override;
  void dropQuery(std::string_view name) override;
  void changesBegin() override { database_.beginWriting(Access::Write); }
  void changesUndone() override;
  /// For many changes at once, all of the caller's transaction: what each would do to the copies of the
  /// descriptions is done at the end.
  void changeMuch(const std::function<void()>& changes);
  /// Names in SQLite of what guards a relation.
  static std::vector<std::string> guardNames(std::string_view relation);

 private:
  using Tables = std::map<std::string, jet::Table, TextLess>;

  /// What is known of another file while it is attached.
  struct LinkedFile {
    std::string schema;  ///< its name in SQLite
    bool attached = false;
    Database::Identity identity;
    uint32_t cookie = 0;  ///< 0: not read
    Tables tables;
  };

  void load();
  Tables readTables(const std::string& schema);
  void readLinks();
  void refreshLinks();
  const LinkedFile& linkedFile(const std::string& path);
  const jet::Table* findLinkedTable(std::string_view name);
  /// Renames a link, or drops it when `newName` is empty; false when there is none.
  bool changeLink(std::string_view name, std::string_view newName);
  void bumpSchema();
  const jet::Table& require(std::string_view name);
  void changing(const std::function<void()>& change);
  /// Gives `table` a new shape; `sources` has the old column for each new one, "" for its default.
  void rebuild(const jet::Table& old, jet::Table shape, const std::vector<std::string>& sources);
  void createStorage(const jet::Table& table);
  void describe(const jet::Table& table);
  void forget(std::string_view table);
  void createStoredIndex(const jet::Table& table, const jet::Index& index);
  void renameInRelations(std::string_view table, std::string_view column, std::string_view newName);
  /// Fails (3303, 3281) when a change takes away what a relation needs of the table.
  void requireRelationsKept(const jet::Table& old, const jet::Table& shape);
  void guardRelation(const jet::Relation& relation);
  void unguardRelation(std::string_view name);
  void unguardRelationsOf(std::string_view table);
  void guardRelationsOf(std::string_view table);
  void guardRulesOf(std::string_view table);
  void unguardRulesOf(std::string_view table);
  void run(std::string_view sql, const std::vector<Stored>& values = {});

  Database& database_;
  Tables tables_;
  std::map<std::string, Link, TextLess> links_;
  std::map<std::string, LinkedFile> linkedFiles_;  // by path
  Tables linkedTables_;                            // of links that were asked for
  uint32_t schema_ = 0;
  uint64_t generation_ = 0;
  bool loaded_ = false, copiesLater_ = false;
};

/// How values of a column type lie in SQLite, by the type's name in zb_columns: INTEGER, REAL, TEXT or BLOB;
/// "" for what is no type.
std::string_view storageOfType(std::string_view typeName);
/// The type whose damaged name this may be; "" when nothing tells it. An empty name is one that is lost.
std::string likelyType(std::string_view damagedName, std::string_view storage);

/// Makes a catalog read anew when it goes, whichever way a change ends.
class Reloading {
 public:
  explicit Reloading(DatabaseCatalog& catalog) : catalog_(catalog) {}
  Reloading(const Reloading&) = delete;
  Reloading& operator=(const Reloading&) = delete;
  ~Reloading() { catalog_.changesUndone(); }

 private:
  DatabaseCatalog& catalog_;
};

/// True for a table of another file.
bool isLinked(const jet::Table& table);

/// Names as lists of the catalog hold them.
std::string joinNames(const std::vector<std::string>& names);

/// Fails (3125) for what can't be a name.
void requireName(std::string_view name);

/// Name in SQLite of an index of a table.
std::string storedIndexName(const jet::Table& table, const jet::Index& index);

/// The column that numbers a table's rows, when it is one that the user sees; else -1.
int counterColumn(const jet::Table& table);

/// True when the index is the order of the row numbers: it needs no storage of its own.
bool isRowOrder(const jet::Table& table, const jet::Index& index);
