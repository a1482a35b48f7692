#include <algorithm>

#include "engine/jet_sql/convert.h"
#include "engine/jet_sql/printer.h"

namespace jet {
namespace {

std::string keyName(size_t i) { return "\"jet key " + std::to_string(i) + "\""; }

std::string tieName(size_t i) { return "\"jet tie " + std::to_string(i) + "\""; }

// What a column of one type needs to stand where another type is expected.
std::string converted(const std::string& sql, Type from, Type to) {
  if (from == to || to == Type::Unknown) return sql;
  if (isTextType(to) && !isTextType(from))
    return "jet_op_text(-1," + sql + "," + std::to_string(static_cast<int>(readingOf(from))) + ")";
  if (to == Type::Currency) return conversionCall("-1", sql, Reading::Plain, to);
  return from == Type::Currency ? sql + "/10000.0" : sql;
}

}  // namespace

void Printer::source(const Source& s, bool nested) {
  const std::string alias = " AS \"t" + std::to_string(s.number) + "\"";
  switch (s.kind) {
    case SourceKind::Table:
      if (s.table) return raw(s.table->sqlName() + alias);
      [[fallthrough]];  // a stored query
    case SourceKind::Derived:
      raw("(");
      query(*s.query);
      raw(")");
      return raw(alias);
    case SourceKind::Join: {
      if (nested) raw("(");
      source(*s.left, false);
      raw(s.join == JoinKind::Inner ? " JOIN " : s.join == JoinKind::Left ? " LEFT JOIN " : " RIGHT JOIN ");
      source(*s.right, true);
      raw(" ON ");
      condition(*s.on);
      return raw(nested ? ")" : "");
    }
  }
}

void Printer::rows(const std::vector<SourcePtr>& sources, const Expression* where) {
  for (size_t i = 0; i < sources.size(); ++i) {
    raw(i == 0 ? " FROM " : ", ");
    source(*sources[i], sources.size() > 1);
  }
  if (!where) return;
  raw(" WHERE ");
  condition(*where);
}

std::vector<std::string> Printer::ties(const Query& query) const {
  std::vector<std::string> keys;
  const auto add = [&](const std::string& sql, Type type) {
    Printer key;
    key.raw(sql);
    key.collate(type);
    keys.push_back(key.take());
  };
  if (query.distinct) {
    for (const OutputColumn& column : query.columns) add(quotedName(column.name), column.type);
  } else if (query.aggregated) {
    for (const ExpressionPtr& group : query.groupBy) {
      Printer key = *this;
      key.out_.clear();
      key.value(*group);
      add("(" + key.take() + ")", group->type);
    }
  } else if (!query.distinctRowIds.empty()) {
    return query.distinctRowIds;
  } else {
    for (const Source* source : leavesOf(query.sources)) {
      if (source->table) keys.push_back(rowIdOf(*source));
    }
  }
  return keys;
}

void Printer::orderKeys(const Query& query, bool& any) {
  for (const OrderKey& key : query.orderBy) {
    raw(any ? ", " : " ORDER BY ");
    any = true;
    const Expression* e = key.expression.get();
    if (key.output >= 0) e = query.items[static_cast<size_t>(key.output)].expression.get();
    raw("(");
    value(*e);
    raw(")");
    collate(e->type);
    if (key.descending) raw(" DESC");
  }
}

// Also the order of rows that are equal in all keys must not depend on the indexes that there are.
void Printer::orderClause(const Query& query, RowOrder order) {
  bool any = false;
  orderKeys(query, any);
  if (!any && order == RowOrder::Any) return;
  for (const std::string& key : ties(query)) {
    raw((any ? ", " : " ORDER BY ") + key);
    any = true;
  }
}

void Printer::crosstabColumns(const Query& query) {
  const Transform& transform = *query.transform;
  Printer pivot;
  pivot.value(*transform.pivot);
  const bool counts =
      transform.value->kind == ExpressionKind::Call && transform.value->special == Special::Count;
  for (size_t i = 0; i < transform.found.size(); ++i) {
    Printer pivotOrder;
    std::string only = " FILTER (WHERE (" + pivot.text() + ")";
    pivotOrder.collate(transform.pivot->type);
    only += pivotOrder.text() + " IS " + transform.found[i].sql + ")";
    raw(",");
    filter_ = only;
    // A cell without records is null, also where a count would be 0.
    if (counts) raw("nullif(");
    value(*transform.value);
    if (counts) raw(",0)");
    filter_.clear();
    raw(" AS " + quotedName(query.columns[query.items.size() + i].name));
  }
}

/// `keys` adds the order's keys as columns; `target` are the types that a union has.
void Printer::select(const Query& query, bool keys, const std::vector<OutputColumn>* target) {
  rowOrder_.clear();
  for (const Source* each : leavesOf(query.sources)) {
    if (each->table) rowOrder_ += "," + rowIdOf(*each);
  }
  raw(query.distinct ? "SELECT DISTINCT " : "SELECT ");
  for (size_t i = 0; i < query.items.size(); ++i) {
    const Expression& e = *query.items[i].expression;
    if (i > 0) raw(",");
    if (target) {
      Printer inner = *this;
      inner.out_.clear();
      inner.value(e);
      raw(converted(inner.out_, e.type, (*target)[i].type));
      collate((*target)[i].type);
    } else {
      value(e);
      if (query.distinct && e.kind != ExpressionKind::Null) collate(e.type);
    }
    raw(" AS " + quotedName(query.columns[i].name));
  }
  if (query.transform) crosstabColumns(query);
  for (const auto& [name, sql] : query.rowNumbers) raw("," + sql + " AS " + quotedName(name));
  if (keys && !query.distinct && !query.aggregated) {
    const std::vector<std::string> numbers = ties(query);
    for (size_t i = 0; i < numbers.size(); ++i) raw("," + numbers[i] + " AS " + tieName(i));
  }
  for (size_t i = 0; keys && i < query.orderBy.size(); ++i) {
    const OrderKey& key = query.orderBy[i];
    const Expression& e =
        key.output >= 0 ? *query.items[static_cast<size_t>(key.output)].expression : *key.expression;
    raw(",");
    value(e);
    collate(e.type);
    raw(" AS " + keyName(i));
  }
  rows(query.sources, query.where.get());
  for (size_t i = 0; i < query.groupBy.size(); ++i) {
    raw(i == 0 ? " GROUP BY (" : ", (");
    value(*query.groupBy[i]);
    raw(")");
    collate(query.groupBy[i]->type);
  }
  for (size_t i = 0; i < query.distinctRowIds.size(); ++i) {
    raw(i == 0 ? " GROUP BY " : ", ");
    raw(query.distinctRowIds[i]);
  }
  if (query.having) {
    raw(" HAVING ");
    condition(*query.having);
  }
}

// Rows that equal the last one in the order's keys come too.
void Printer::topQuery(const Query& query) {
  const Top& top = *query.top;
  if (query.orderBy.empty() && !top.percent) {
    select(query, false, nullptr);
    orderClause(query, RowOrder::Natural);
    return raw(" LIMIT " + std::to_string(static_cast<int64_t>(top.count)));
  }
  const auto keyList = [&](bool withTies) {
    bool any = false;
    for (size_t i = 0; i < query.orderBy.size(); ++i) {
      const OrderKey& key = query.orderBy[i];
      const Expression& e =
          key.output >= 0 ? *query.items[static_cast<size_t>(key.output)].expression : *key.expression;
      raw(any ? ", " : " ORDER BY ");
      any = true;
      raw(keyName(i));
      collate(e.type);
      if (key.descending) raw(" DESC");
    }
    if (!withTies) return;
    const bool byOutput = query.distinct || query.aggregated;
    const size_t count = byOutput ? query.columns.size() : ties(query).size();
    for (size_t i = 0; i < count; ++i) {
      raw((any ? ", " : " ORDER BY ") + (byOutput ? quotedName(query.columns[i].name) : tieName(i)));
      if (byOutput) collate(query.columns[i].type);
      any = true;
    }
  };
  raw("SELECT ");
  for (size_t i = 0; i < query.columns.size(); ++i)
    raw((i > 0 ? "," : "") + quotedName(query.columns[i].name));
  const bool ranked = !query.orderBy.empty();
  raw(ranked ? " FROM (SELECT *, rank() OVER (" : " FROM (SELECT *, row_number() OVER (");
  keyList(!ranked);
  raw(") AS \"jet rank\", count(*) OVER () AS \"jet count\" FROM (");
  select(query, true, nullptr);
  raw(")) WHERE ");
  if (top.percent) {
    raw("(\"jet rank\" - 1) * 100.0 < " + std::to_string(top.count) + " * \"jet count\"");
  } else {
    raw("\"jet rank\" <= " + std::to_string(static_cast<int64_t>(top.count)));
  }
  keyList(true);
}

void Printer::unionPart(const Query& part, const std::vector<OutputColumn>& target, RowOrder order) {
  if (order == RowOrder::Any && part.parts.empty() && !part.top && !part.transform && part.orderBy.empty())
    return select(part, false, &target);
  raw("SELECT ");
  for (size_t i = 0; i < target.size(); ++i) {
    if (i > 0) raw(",");
    raw(converted(quotedName(part.columns[i].name), part.columns[i].type, target[i].type));
    collate(target[i].type);
    raw(" AS " + quotedName(target[i].name));
  }
  raw(" FROM (");
  query(part);
  raw(")");
}

void Printer::unionQuery(const Query& query) {
  if (!query.orderBy.empty()) raw("SELECT * FROM (");
  const bool allKept = query.orderBy.empty() && std::all_of(query.parts.begin(), query.parts.end(),
                                                            [](const Query::Part& part) { return part.all; });
  for (size_t i = 0; i < query.parts.size(); ++i) {
    if (i > 0) raw(query.parts[i].all ? " UNION ALL " : " UNION ");
    // Where rows are compared with each other they come ascending.
    unionPart(*query.parts[i].query, query.columns, allKept ? RowOrder::Natural : RowOrder::Any);
  }
  if (query.orderBy.empty()) return;
  raw(")");
  for (size_t i = 0; i < query.orderBy.size(); ++i) {
    const OutputColumn& column = query.columns[static_cast<size_t>(query.orderBy[i].output)];
    raw((i == 0 ? " ORDER BY " : ", ") + quotedName(column.name));
    collate(column.type);
    if (query.orderBy[i].descending) raw(" DESC");
  }
}

void Printer::query(const Query& query, RowOrder order) {
  if (++deep_ > maxNesting) throw Failure{{tooComplex, "The statement is too complex.", std::nullopt}};
  const bool before = foreign_;
  const std::string filter = std::move(filter_), rowOrder = rowOrder_;
  filter_.clear();
  foreign_ = foreign_ || query.stored;
  if (!query.parts.empty()) {
    unionQuery(query);
  } else if (query.top) {
    topQuery(query);
  } else {
    select(query, false, nullptr);
    orderClause(query, order);
  }
  foreign_ = before;
  filter_ = filter;
  rowOrder_ = rowOrder;
  --deep_;
}

void Printer::pivotValues(const Query& query) {
  raw("SELECT DISTINCT ");
  value(*query.transform->pivot);
  collate(query.transform->pivot->type);
  rows(query.sources, query.where.get());
  raw(" ORDER BY 1");
}

}  // namespace jet
