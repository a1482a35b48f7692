#pragma once

#include <string>

#include "engine/jet_sql/binder.h"

namespace jet {

/// Prints bound expressions and queries as SQLite text with the dialect's meaning. What was printed
/// gathers in `text()`. Throws `Failure` (3360) when it grows beyond bounds.
class Printer {
 public:
  /// As its type stores it.
  void value(const Expression& expression);
  /// For a place where SQLite only asks whether it is true.
  void condition(const Expression& expression);
  /// The value as a column stores it, checked against the column's rules.
  void stored(const Expression& expression, const Column& column);
  /// The same for a value that is SQLite text already, of type `from`.
  void storedText(const std::string& sql, Type from, const Column& column, int64_t place);

  /// Rows without an order of their own come in that of their tables; `Any` leaves the order open, where
  /// nobody asks for it.
  enum class RowOrder { Natural, Any };
  void query(const Query& query, RowOrder order = RowOrder::Natural);
  /// The rows of a Select without its output: FROM and WHERE.
  void rows(const std::vector<SourcePtr>& sources, const Expression* where);
  /// The distinct values of a crosstab's pivot, in order.
  void pivotValues(const Query& query);

  void raw(std::string_view text);
  const std::string& text() const { return out_; }
  std::string take() { return std::move(out_); }

 private:
  enum class Form { Plain, Scaled, Real };

  // Expressions.
  void place(const Expression& expression);
  void literal(const Expression& expression);
  void real(const Expression& expression);    ///< a number that is not scaled
  void scaled(const Expression& expression);  ///< a currency amount in ten-thousandths
  void asText(const Expression& expression);  ///< fit for functions that read text
  void as(const Expression& expression, Type type);
  void operand(const Expression& expression, Form form);
  Form comparisonForm(const std::vector<const Expression*>& operands) const;
  void compared(const Expression& left, const std::vector<const Expression*>& all, Form form);
  void truth(const Expression& expression);
  void comparison(const Expression& expression);
  void like(const Expression& expression);
  void logic(const Expression& expression);
  void logicRange(const Expression& expression, size_t from, size_t to);
  void bits(const Expression& expression);
  void arithmetic(const Expression& expression);
  void arithmeticSteps(const Expression& expression, size_t count, Type type);
  void concat(const Expression& expression);
  void call(const Expression& expression);
  void specialCall(const Expression& expression);
  void aggregate(const Expression& expression);
  void inQuery(const Expression& expression);
  void quantified(const Expression& expression);
  void bounds(const Expression& between, Form form);
  void subqueryValue(const Expression& expression);

  // Queries.
  void select(const Query& query, bool keys, const std::vector<OutputColumn>* target);
  void crosstabColumns(const Query& query);
  void topQuery(const Query& query);
  void unionQuery(const Query& query);
  void unionPart(const Query& query, const std::vector<OutputColumn>& target, RowOrder order);
  void orderClause(const Query& query, RowOrder order);
  void orderKeys(const Query& query, bool& any);
  /// What orders rows that an order leaves equal, or has none.
  std::vector<std::string> ties(const Query& query) const;
  void source(const Source& source, bool nested);
  void collate(Type type);

  std::string out_;
  std::string rowOrder_;  ///< row numbers of the tables whose rows are aggregated, each behind a comma
  std::string filter_;    ///< what an aggregate's rows are filtered by within a crosstab
  bool foreign_ = false;  ///< within a stored query
  int deep_ = 0;
};

std::string quotedText(std::string_view text);

bool isNumberLiteral(const Expression& expression);
/// Whether a currency amount and this may be compared in ten-thousandths.
bool isScaledExactly(const Expression& expression);

}  // namespace jet
