#pragma once

#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "engine/jet_sql/query.h"

namespace jet {

struct SelectStatement {
  std::unique_ptr<Query> query;
};

struct InsertStatement {
  std::string table;
  size_t place = 0;
  std::vector<std::string> columns;  ///< empty: all, in order; of a query: by name
  std::vector<size_t> columnPlaces;
  std::vector<ExpressionPtr> values;  ///< unless `query`
  std::unique_ptr<Query> query;
};

struct Assignment {
  ExpressionPtr target;  ///< a Name
  ExpressionPtr value;
};

struct UpdateStatement {
  std::vector<SourcePtr> sources;
  std::vector<Assignment> assignments;
  ExpressionPtr where;
};

struct DeleteStatement {
  std::string target;  ///< `table.*`, "" when the only table is meant
  size_t place = 0;
  std::vector<SourcePtr> sources;
  ExpressionPtr where;
};

struct CreateTableStatement {
  Table table;
  std::vector<Relation> relations;
};

enum class AlterAction { AddColumn, AlterColumn, DropColumn, AddIndex, AddRelation, DropConstraint };

struct AlterTableStatement {
  std::string table;
  AlterAction action = AlterAction::AddColumn;
  std::vector<Column> columns;  ///< also just the name for DropColumn
  std::vector<Index> indexes;
  std::vector<Relation> relations;
  std::string constraint;
};

struct CreateIndexStatement {
  std::string table;
  Index index;
};

enum class DropKind { Table, Index, Query };

struct DropStatement {
  DropKind kind = DropKind::Table;
  std::string name, table;
};

struct CreateQueryStatement {
  std::string name, sql;
};

struct ExecuteStatement {
  std::string name;
  std::vector<ExpressionPtr> arguments;
};

struct ParsedStatement {
  std::vector<ParameterDeclaration> parameters;
  std::variant<SelectStatement, InsertStatement, UpdateStatement, DeleteStatement, CreateTableStatement,
               AlterTableStatement, CreateIndexStatement, DropStatement, CreateQueryStatement,
               ExecuteStatement>
      body;
};

/// Parses one statement; a `;` may end it. Throws `Failure` with the number that fits the clause.
ParsedStatement parseStatement(std::string_view sql);

/// Parses a rule for the values of a field, such as `>0` or `Is Null Or Between 1 And 5`, or of a table,
/// whose rules name all fields (`column` empty).
ExpressionPtr parseRule(std::string_view text, std::string column);

/// Parses an expression that stands alone, such as a column's default.
ExpressionPtr parseExpression(std::string_view text);

}  // namespace jet
