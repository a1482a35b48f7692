#include <algorithm>
#include <map>

#include "engine/jet_sql/jet_sql.h"
#include "engine/mdb/jet_rows.h"
#include "engine/mdb/jet_schema.h"
#include "engine/text/collation.h"

namespace mdb {
namespace {

// A query lies in the file as rows, each with the number of the clause that it belongs to.
enum Clause : int64_t {
  kindClause = 1,
  parameterClause = 2,
  optionClause = 3,
  sourceClause = 5,
  columnClause = 6,
  joinClause = 7,
  whereClause = 8,
  groupClause = 9,
  havingClause = 10,
  orderClause = 11,
};
enum QueryKind : int64_t {
  selectQuery = 1,
  makeTableQuery = 2,
  appendQuery = 3,
  updateQuery = 4,
  deleteQuery = 5,
  crosstabQuery = 6,
  definitionQuery = 7,
  passThroughQuery = 8,
  unionQuery = 9,
};
enum Option : int64_t { allColumns = 0x1, distinct = 0x2, distinctRow = 0x8, top = 0x10, percent = 0x20 };
enum ColumnFlag : int64_t { pivots = 0x1, isRowHeading = 0x2, appendsValue = 0x8000 };
constexpr int64_t dropsDuplicates = 0x2;  // of a union

struct Part {
  int64_t flag = 0;
  std::string order, name1, name2, expression;
};

class QueryText {
 public:
  explicit QueryText(std::map<int64_t, std::vector<Part>> parts) : parts_(std::move(parts)) {}

  std::string sql() const {
    const std::string parameters = parameterList();
    switch (kind().flag ? kind().flag : int64_t{selectQuery}) {
      case selectQuery:
        return parameters + select("") + tail();
      case makeTableQuery:
        return parameters + select(" INTO " + bracketed(kind().name1)) + tail();
      case appendQuery:
        return parameters + append();
      case updateQuery:
        return parameters + "UPDATE " + sources() + " SET " + assignments() + clause(whereClause, " WHERE ");
      case deleteQuery:
        return parameters + "DELETE " + columns(0) + from() + clause(whereClause, " WHERE ");
      case crosstabQuery:
        return parameters + crosstab();
      case definitionQuery:
        return kind().expression;
      case unionQuery:
        return parameters + unionOf() + orderBy();
      case passThroughQuery:
        throw JetError("it is written for another server");
      default:
        throw JetError("its kind is unknown");
    }
  }

 private:
  const std::vector<Part>& all(int64_t number) const {
    static const std::vector<Part> none;
    const auto found = parts_.find(number);
    return found == parts_.end() ? none : found->second;
  }
  Part first(int64_t number) const { return all(number).empty() ? Part() : all(number)[0]; }
  Part kind() const { return first(kindClause); }

  static std::string bracketed(const std::string& name) {
    return name.empty() || name.starts_with('[') ? name : "[" + name + "]";
  }
  static void add(std::string& list, const std::string& item) { list += (list.empty() ? "" : ", ") + item; }
  std::string clause(int64_t number, const char* word) const {
    return all(number).empty() ? "" : word + first(number).expression;
  }

  std::string parameterList() const {
    const auto typeName = [](int64_t type) -> std::string {
      constexpr std::pair<int64_t, const char*> names[] = {
          {MDB_BOOL, "Bit"},        {MDB_BYTE, "Byte"},         {MDB_INT, "Short"},
          {MDB_LONGINT, "Long"},    {MDB_MONEY, "Currency"},    {MDB_FLOAT, "Single"},
          {MDB_DOUBLE, "Double"},   {MDB_DATETIME, "DateTime"}, {MDB_BINARY, "Binary"},
          {MDB_TEXT, "Text (255)"}, {MDB_OLE, "LongBinary"},    {MDB_MEMO, "Memo"},
          {MDB_REPID, "Guid"}};
      for (const auto& [number, name] : names) {
        if (number == type) return name;
      }
      return "Value";
    };
    std::string list;
    for (const Part& part : all(parameterClause))
      add(list, bracketed(part.name1) + " " + typeName(part.flag));
    return list.empty() ? "" : "PARAMETERS " + list + "; ";
  }

  std::string options() const {
    const Part part = first(optionClause);
    std::string words;
    if (part.flag & distinct) words += "DISTINCT ";
    if (part.flag & distinctRow) words += "DISTINCTROW ";
    if (part.flag & top) words += "TOP " + part.name1 + (part.flag & percent ? " PERCENT " : " ");
    return words;
  }

  std::string columns(int64_t wantedFlags) const {
    std::string list;
    for (const Part& part : all(columnClause)) {
      if (wantedFlags && !(part.flag & wantedFlags)) continue;
      add(list, part.expression + (part.name1.empty() ? "" : " AS " + bracketed(part.name1)));
    }
    if (first(optionClause).flag & allColumns) add(list, "*");
    return list;
  }

  // Tables stand alone or in joins; each join goes between two names, of which an earlier join may have met
  // one.
  std::string sources() const {
    struct Group {
      std::vector<std::string> names;
      std::string text;
    };
    std::vector<Group> groups;
    for (const Part& part : all(sourceClause)) {
      const std::string& name = part.name2.empty() ? part.name1 : part.name2;
      std::string text = part.expression.empty() ? bracketed(part.name1) : "(" + part.expression + ")";
      if (!part.name2.empty()) text += " AS " + bracketed(part.name2);
      groups.push_back({{name}, text});
    }
    const auto groupOf = [&](const std::string& name) {
      return std::find_if(groups.begin(), groups.end(), [&](const Group& group) {
        return std::any_of(group.names.begin(), group.names.end(),
                           [&](const std::string& each) { return sameText(each, name); });
      });
    };
    for (const Part& part : all(joinClause)) {
      const auto left = groupOf(part.name1), right = groupOf(part.name2);
      if (left == groups.end() || right == groups.end()) throw JetError("a join of it names no table");
      if (left == right) {  // a second condition of a join that stands
        const size_t close = left->text.rfind(')');
        if (close == std::string::npos) throw JetError("its joins");
        left->text.insert(close, " AND " + part.expression);
        continue;
      }
      const char* word = part.flag == 2 ? " LEFT JOIN " : part.flag == 3 ? " RIGHT JOIN " : " INNER JOIN ";
      const auto operand = [](const Group& group) {
        return group.names.size() > 1 ? "(" + group.text + ")" : group.text;
      };
      Group joined{left->names, operand(*left) + word + operand(*right) + " ON (" + part.expression + ")"};
      joined.names.insert(joined.names.end(), right->names.begin(), right->names.end());
      *left = std::move(joined);
      groups.erase(right);
    }
    std::string list;
    for (const Group& group : groups) add(list, group.text);
    return list;
  }
  std::string from() const {
    const std::string list = sources();
    return list.empty() ? "" : " FROM " + list;
  }

  std::string orderBy() const {
    std::string list;
    for (const Part& part : all(orderClause)) add(list, part.expression + (part.name1 == "D" ? " DESC" : ""));
    return list.empty() ? "" : " ORDER BY " + list;
  }
  std::string groupBy(int64_t wantedFlags) const {
    std::string list;
    for (const Part& part : all(groupClause)) {
      if (!wantedFlags || part.flag & wantedFlags) add(list, part.expression);
    }
    return list.empty() ? "" : " GROUP BY " + list;
  }
  std::string tail() const {
    return clause(whereClause, " WHERE ") + groupBy(0) + clause(havingClause, " HAVING ") + orderBy();
  }
  std::string select(const std::string& into) const {
    return "SELECT " + options() + columns(0) + into + from();
  }

  std::string append() const {
    std::string targets, values;
    bool plainValues = false;
    for (const Part& part : all(columnClause)) {
      if (!part.name2.empty()) add(targets, bracketed(part.name2));
      add(values, part.expression + (part.name1.empty() ? "" : " AS " + bracketed(part.name1)));
      plainValues = plainValues || part.flag & appendsValue;
    }
    const std::string head =
        "INSERT INTO " + bracketed(kind().name1) + (targets.empty() ? "" : " (" + targets + ")");
    if (plainValues) return head + " VALUES (" + values + ")";
    if (values.empty() && first(optionClause).flag & allColumns) values = "*";
    return head + " SELECT " + options() + values + from() + tail();
  }

  std::string assignments() const {
    std::string list;
    for (const Part& part : all(columnClause)) add(list, part.name2 + " = " + part.expression);
    return list;
  }

  std::string crosstab() const {
    std::string value, pivot;
    for (const Part& part : all(columnClause)) {
      if (part.flag & pivots) pivot = part.expression;
      if (!(part.flag & (pivots | isRowHeading)))
        value = part.expression + (part.name1.empty() ? "" : " AS " + bracketed(part.name1));
    }
    return "TRANSFORM " + value + " SELECT " + columns(isRowHeading) + from() +
           clause(whereClause, " WHERE ") + groupBy(isRowHeading) + orderBy() + " PIVOT " + pivot;
  }

  std::string unionOf() const {
    std::string text;
    for (const Part& part : all(sourceClause)) {
      std::string query = part.expression;
      query.erase(query.find_last_not_of("; \r\n\t") + 1);
      if (!text.empty()) text += first(optionClause).flag & dropsDuplicates ? " UNION " : " UNION ALL ";
      text += query;
    }
    return text;
  }

  std::map<int64_t, std::vector<Part>> parts_;
};

}  // namespace

std::vector<JetQuery> readQueries(JetFile& file) {
  constexpr int64_t queryKind = 5;
  std::map<int64_t, std::string> names;
  for (JetRows rows(file, "MSysObjects"); rows.next();) {
    if (rows.number("Type") == queryKind && !rows.text("Name").starts_with("~"))
      names[rows.number("Id")] = rows.text("Name");
  }
  std::map<int64_t, std::map<int64_t, std::vector<Part>>> parts;
  for (JetRows rows(file, "MSysQueries"); rows.next();) {
    const int64_t object = rows.number("ObjectId");
    if (!names.contains(object)) continue;
    parts[object][rows.number("Attribute")].push_back({rows.number("Flag"), rows.text("Order"),
                                                       rows.text("Name1"), rows.text("Name2"),
                                                       rows.text("Expression")});
  }
  std::vector<JetQuery> queries;
  for (const auto& [object, name] : names) {
    JetQuery query{name, "", ""};
    try {
      auto& own = parts[object];
      for (auto& [clause, list] : own)
        std::stable_sort(list.begin(), list.end(), [](auto& a, auto& b) { return a.order < b.order; });
      query.sql = QueryText(own).sql();
      if (const auto error = jet::checkSyntax(query.sql)) throw JetError(error->text + " In: " + query.sql);
    } catch (const JetError& error) {
      query.failure = error.what();
    }
    queries.push_back(std::move(query));
  }
  return queries;
}

}  // namespace mdb
