#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engine/jet_sql/expression.h"

namespace jet {

struct ParameterDeclaration {
  std::string name;
  Type type = Type::Unknown;
};

struct OutputItem {
  ExpressionPtr expression;  ///< null for a star
  std::string alias;
  std::string starOf;  ///< `table.*`; "" for a plain star
  size_t place = 0;
};

enum class SourceKind { Table, Derived, Join };
enum class JoinKind { Inner, Left, Right };

struct Source;
using SourcePtr = std::unique_ptr<Source>;

/// A table or stored query by name, a query in parentheses, or a join of two sources.
struct Source {
  SourceKind kind = SourceKind::Table;
  size_t place = 0;
  std::string name, alias;
  std::unique_ptr<Query> query;  ///< Derived; for a stored query filled by name resolution
  JoinKind join = JoinKind::Inner;
  SourcePtr left, right;
  ExpressionPtr on;

  // What name resolution finds out.
  const Table* table = nullptr;
  int number = -1;
};

/// The tables and queries of which sources consist, from the left.
std::vector<const Source*> leavesOf(const std::vector<SourcePtr>& sources);

struct OrderKey {
  ExpressionPtr expression;
  bool descending = false;
  int output = -1;  ///< number of the output column that it names
};

struct Top {
  double count = 0;
  bool percent = false;
};

struct Transform {
  ExpressionPtr value, pivot;
  std::vector<ExpressionPtr> headings;  ///< the In list of Pivot

  /// A column of the answer: its name, and the pivot's value as SQLite reads it.
  struct Heading {
    std::string name, sql;
  };
  std::vector<Heading> found;  ///< filled by name resolution
};

struct OutputColumn {
  std::string name;
  Type type = Type::Unknown;
  int size = 0;
  bool counter = false;
};

struct Query {
  size_t place = 0;
  bool distinct = false, distinctRow = false;
  std::optional<Top> top;
  std::vector<OutputItem> items;
  std::string into;
  std::vector<SourcePtr> sources;
  ExpressionPtr where;
  std::vector<ExpressionPtr> groupBy;
  ExpressionPtr having;
  std::vector<OrderKey> orderBy;
  std::unique_ptr<Transform> transform;

  /// A union: this query has no items of its own, and orders its parts' rows.
  struct Part {
    std::unique_ptr<Query> query;
    bool all = false;  ///< keeps duplicates of this and what stands before it
  };
  std::vector<Part> parts;

  // What name resolution finds out.
  std::vector<OutputColumn> columns;
  /// Row numbers of the tables within, by the name under which a change of the query's rows finds them.
  std::map<std::string, std::string> rowNumbers;
  bool aggregated = false;
  bool stored = false;  ///< from a stored query: its places aren't places of the statement
  std::vector<std::string>
      distinctRowIds;  ///< row numbers, as SQLite reads them, by which DistinctRow groups
};

}  // namespace jet
