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

  void query(const Query& query);
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

  // Queries.
  void select(const Query& query, bool keys, const std::vector<OutputColumn>* target);
  void crosstabColumns(const Query& query);
  void topQuery(const Query& query);
  void unionQuery(const Query& query);
  void unionPart(const Query& query, const std::vector<OutputColumn>& target);
  void orderClause(const Query& query);
  void source(const Source& source, bool nested);
  void collate(Type type);

  std::string out_;
  std::string filter_;    ///< what an aggregate's rows are filtered by within a crosstab
  bool foreign_ = false;  ///< within a stored query
  int deep_ = 0;
};

std::string quotedText(std::string_view text);

}  // namespace jet
