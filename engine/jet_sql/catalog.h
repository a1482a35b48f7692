#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/errors/error.h"

namespace jet {

/// Column types, and beside each how its values lie in SQLite.
enum class Type {
  Unknown,   ///< not known before the statement runs: as SQLite's value says
  YesNo,     ///< INTEGER 0 or -1
  Byte,      ///< INTEGER 0 to 255
  Integer,   ///< INTEGER of 16 bits
  Long,      ///< INTEGER of 32 bits
  Currency,  ///< INTEGER, ten-thousandths
  Single,    ///< REAL
  Double,    ///< REAL
  Date,      ///< REAL, days since 1899-12-30; the fraction is the time of day also in negative days
  Text,      ///< TEXT in UTF-8, at most `Column::size` characters
  Memo,      ///< TEXT in UTF-8
  Binary,    ///< BLOB
  Guid,      ///< TEXT in braces, upper-case
};

struct Column {
  std::string name;
  Type type = Type::Unknown;
  int size = 0;              ///< characters of a Text (0: 255), bytes of a Binary (0: no limit)
  bool required = false;     ///< refuses null
  bool counter = false;      ///< a Long that numbers itself when an insert leaves it out
  bool emptyAllowed = true;  ///< a text may be ""
  std::string defaultValue;  ///< expression in the dialect, "" for none
  std::string sqlName;       ///< name in SQLite, unquoted; "" when it is `name`
  bool inKey = false;        ///< an index refuses null in it
};

struct IndexColumn {
  std::string name;
  bool descending = false;
};

struct Index {
  std::string name;
  std::vector<IndexColumn> columns;
  bool primary = false;
  bool unique = false;
  bool required = false;    ///< refuses null in its columns
  bool ignoreNull = false;  ///< rows with null stay out of the index
};

/// Referential integrity: `columns` of `table` (the many side) refer to `foreignColumns` of `foreignTable`.
struct Relation {
  std::string name, table, foreignTable;
  std::vector<std::string> columns, foreignColumns;  ///< `foreignColumns` empty: its primary key
  bool cascadeUpdate = false, cascadeDelete = false, setNullOnDelete = false;
};

struct Table {
  std::string name;
  std::string schema = "main";    ///< SQLite's name of the database that it lies in
  std::string stored;             ///< its name there
  std::string rowId = "_rowid_";  ///< the row number's name, one that no column bears
  std::vector<Column> columns;
  std::vector<Index> indexes;

  /// Where it lies, complete and quoted: `"main"."Jobs"`.
  std::string sqlName() const;
  const Column* findColumn(std::string_view name) const;
};

/// What the dialect knows of a database, and the changes of its schema that statements ask for.
/// Names are found without regard to case and keep the spelling of their creation. A change either
/// is made whole or throws `Failure`; it runs inside the statement's transaction on the same
/// connection and starts none of its own. A pointer from `findTable` lives until the next change.
class Catalog {
 public:
  virtual ~Catalog() = default;

  /// The number that a counter gave last on this connection, which is @@IDENTITY; 0 when none did.
  int64_t lastCounter = 0;

  virtual const Table* findTable(std::string_view name) = 0;
  /// True also for a table that is there but can't be reached at the moment, where `findTable` may throw
  /// `Failure`.
  virtual bool hasTable(std::string_view name) { return findTable(name) != nullptr; }
  /// SQL text of a stored query.
  virtual std::optional<std::string> findQuery(std::string_view name) = 0;

  virtual void createTable(const Table& definition) = 0;  ///< columns and indexes, without a place
  virtual void dropTable(std::string_view table) = 0;
  virtual void addColumn(std::string_view table, const Column& column) = 0;
  /// Retypes the column named `column.name` and converts its values.
  virtual void alterColumn(std::string_view table, const Column& column) = 0;
  virtual void dropColumn(std::string_view table, std::string_view column) = 0;
  virtual void createIndex(std::string_view table, const Index& index) = 0;
  virtual void dropIndex(std::string_view table, std::string_view index) = 0;
  virtual void createRelation(const Relation& relation) = 0;
  virtual void dropRelation(std::string_view table, std::string_view relation) = 0;
  virtual void createQuery(std::string_view name, std::string_view sql) = 0;
  virtual void dropQuery(std::string_view name) = 0;

  /// A statement that changes something begins; nothing is open yet.
  virtual void changesBegin() {}
  /// The statement failed and its transaction is undone: forget what was cached since it began.
  virtual void changesUndone() = 0;
};

}  // namespace jet
