#pragma once

#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/jet_sql/jet_sql.h"
#include "engine/jet_sql/statement.h"

namespace jet {

/// A parameter that a statement takes: its number in SQLite is its place in the list, from 1.
struct ParameterSlot {
  std::string name;
  Type type = Type::Unknown;  ///< as declared, or as its value comes
  const Parameter* given = nullptr;
  size_t place = 0;
};

/// Resolves the names of a statement against a catalog and finds the types of its expressions. What it
/// finds it writes into the statement. Throws `Failure`.
class Binder {
 public:
  /// Gives the headings of a crosstab whose query is bound but for them.
  using PivotReader = std::function<std::vector<Transform::Heading>(const Query&)>;

  Binder(Catalog& catalog, std::string_view statement, const std::vector<Parameter>& given,
         PivotReader pivots);

  void declare(const std::vector<ParameterDeclaration>& parameters);
  void bindQuery(Query& query);
  void bindSources(std::vector<SourcePtr>& sources);  ///< of Update and Delete: in force for what follows
  void bindCondition(ExpressionPtr& condition);
  void bindValue(Expression& expression);
  /// The base table and the source's number that the target of an assignment belongs to.
  const Column& bindTarget(Expression& target, const Source*& source);
  const Table& table(std::string_view name, size_t place, int number);
  /// Refuses (3464) a value whose type is known not to fit.
  void checkStorable(const Expression& value, const Column& column);

  /// After all is bound: 3061 when values are missing.
  void checkParameters() const;
  /// Fails for a value that was given under a name that no parameter has. Once all of the statement is bound.
  void checkNames() const;
  const std::vector<ParameterSlot>& slots() const { return slots_; }
  [[noreturn]] void fail(int number, std::string text, size_t place) const;

 private:
  struct ScopeColumn {
    std::string name;
    Type type;
    int size;
    bool counter;
  };
  struct ScopeSource {
    std::string alias;
    const Source* source;
    std::vector<ScopeColumn> columns;
    std::vector<std::string> sqlNames;
  };
  struct Scope {
    std::vector<ScopeSource> sources;
    Query* query = nullptr;
    bool aliases = false;     ///< names may stand for output items
    bool aggregates = false;  ///< aggregate functions may stand here
    bool inAggregate = false;
    std::vector<int> itemStates;  ///< of output items: 0 not bound, 1 being bound, 2 bound
  };

  void bindSource(Source& source, Scope& scope);
  void bindTableSource(Source& source, Scope& scope);
  void addDerived(Source& source, Scope& scope, const std::string& alias);
  void bindSpec(Query& query);
  void bindUnion(Query& query);
  void bindTransform(Query& query);
  void expandStars(Query& query);
  void bindItem(Query& query, size_t index);
  void nameOutputs(Query& query);
  void bindOrder(Query& query);
  void checkGrouping(const Query& query);
  void checkGrouped(const Expression& expression, const Query& query);
  void findDistinctRows(Query& query);

  void bind(Expression& expression);
  void bindName(Expression& expression);
  bool bindColumn(Expression& expression, Scope& scope);
  bool bindAlias(Expression& expression);
  void bindParameter(Expression& expression, const std::string& name);
  void bindCall(Expression& expression);
  void bindAggregate(Expression& expression);
  void bindSpecialCall(Expression& expression);
  void bindSubquery(Expression& expression);
  void bindArithmetic(Expression& expression);
  void checkComparable(Expression& a, Expression& b, size_t place);
  const Parameter* nextGiven(const std::string& name);

  Scope& scope() { return scopes_.back(); }

  Catalog& catalog_;
  std::string_view text_;
  const std::vector<Parameter>& given_;
  PivotReader pivots_;
  std::deque<Scope> scopes_;
  std::deque<std::string> storedTexts_;  ///< keeps what places in stored queries refer to
  std::vector<ParameterSlot> slots_;
  size_t nextGiven_ = 0;
  int nextSource_ = 0;
  int depth_ = 0;
  int storedDepth_ = 0;
};

/// The type in which values of both can stand.
Type commonType(const Expression& a, const Expression& b);
Type commonType(Type a, Type b);

bool isTextType(Type type);
bool isNumberType(Type type);  ///< also YesNo, not Date
bool isWholeType(Type type);
bool isTruth(const Expression& expression);  ///< YesNo as an operator's answer
std::string quotedName(std::string_view name);
std::string rowIdOf(const Source& source);  ///< row number of a table's source, as SQLite reads it

}  // namespace jet
