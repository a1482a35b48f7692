#pragma once

#include <sqlite3.h>

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "engine/jet_sql/catalog.h"

/// The Jet SQL dialect over SQLite: statements are parsed, resolved against a catalog and printed as
/// SQLite statements that give Jet's answers. See docs/database.md for the dialect.
namespace jet {

/// Makes the dialect's functions and the collation JET known to a connection. Once for each connection,
/// before any other use. Gives SQLite's result code.
int registerFunctions(sqlite3* database);

using Bytes = std::vector<uint8_t>;

/// A parameter's value as its type stores it (see `Type`): int64_t for whole numbers and scaled currency,
/// double for reals and dates, string for texts and GUIDs; monostate is null.
struct Parameter {
  std::string name;  ///< "" to be taken by place
  Type type = Type::Unknown;
  std::variant<std::monostate, int64_t, double, std::string, Bytes> value;
};

struct ResultColumn {
  std::string name;  ///< names are unique within a result
  Type type = Type::Unknown;
};

/// Takes the rows of a query while it runs.
class RowSink {
 public:
  virtual ~RowSink() = default;
  /// Once, before the first row and also when there is none.
  virtual void begin(const std::vector<ResultColumn>& columns) = 0;
  /// The row's values stand in `row`, column by column; they are stored as the column's type says, but a
  /// whole number may stand where the type is real. Read them with the matching `sqlite3_column_…`.
  virtual void row(sqlite3_stmt* row) = 0;
};

/// Runs one statement in one transaction (a savepoint when the connection is within one): after a failure
/// nothing of it stands, though `rows` may have taken some. Parameters are taken by name where they have one,
/// the others in the order of `Parameters` and then of first use. `rows` may be null. Gives the number of
/// rows inserted, changed, deleted, or given by a query; throws `Failure`.
int64_t execute(sqlite3* database, Catalog& catalog, std::string_view sql,
                const std::vector<Parameter>& parameters = {}, RowSink* rows = nullptr);

/// The syntax error of a statement, if any; names are not looked up.
std::optional<Error> checkSyntax(std::string_view sql);

/// What a condition text such as a column's default or rule is worth: a single expression without names.
std::optional<Error> checkExpression(std::string_view expression);

}  // namespace jet
