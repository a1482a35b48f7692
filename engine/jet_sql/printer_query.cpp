#include "engine/jet_sql/printer.h"

namespace jet {
namespace {

std::string keyName(size_t i) { return "\"jet key " + std::to_string(i) + "\""; }

// What a column of one type needs to stand where another type is expected.
std::string converted(const std::string& sql, Type from, Type to) {
  if (from == to || to == Type::Unknown) return sql;
  const int reading = from == Type::Date ? 1 : from == Type::Currency ? 2 : from == Type::Single ? 3 : 0;
  if (isTextType(to) && !isTextType(from))
    return "jet_op_text(-1," + sql + "," + std::to_string(reading) + ")";
  if (to == Type::Currency) return "jet_op_as(-1," + sql + "," + std::to_string(static_cast<int>(to)) + ",0)";
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

void Printer::orderClause(const Query& query) {
  for (size_t i = 0; i < query.orderBy.size(); ++i) {
    const OrderKey& key = query.orderBy[i];
    raw(i == 0 ? " ORDER BY " : ", ");
    const Expression* e = key.expression.get();
    if (key.output >= 0) e = query.items[static_cast<size_t>(key.output)].expression.get();
    raw("(");
    value(*e);
    raw(")");
    collate(e->type);
    if (key.descending) raw(" DESC");
  }
}

void Printer::crosstabColumns(const Query& query) {
  const Transform& transform = *query.transform;
  Printer pivot;
  pivot.value(*transform.pivot);
  const bool counts =
      transform.value->kind == ExpressionKind::Call && transform.value->special == Special::Count;
  for (size_t i = 0; i < transform.found.size(); ++i) {
    std::string only = " FILTER (WHERE (" + pivot.text() + ")";
    if (isTextType(transform.pivot->type) || transform.pivot->type == Type::Unknown) only += " COLLATE JET";
    only += " IS " + transform.found[i].sql + ")";
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
    return raw(" LIMIT " + std::to_string(static_cast<int64_t>(top.count)));
  }
  const auto keyList = [&] {
    for (size_t i = 0; i < query.orderBy.size(); ++i) {
      const OrderKey& key = query.orderBy[i];
      const Expression& e =
          key.output >= 0 ? *query.items[static_cast<size_t>(key.output)].expression : *key.expression;
      raw(i == 0 ? " ORDER BY " : ", ");
      raw(keyName(i));
      collate(e.type);
      if (key.descending) raw(" DESC");
    }
  };
  raw("SELECT ");
  for (size_t i = 0; i < query.columns.size(); ++i)
    raw((i > 0 ? "," : "") + quotedName(query.columns[i].name));
  raw(query.orderBy.empty() ? " FROM (SELECT *, row_number() OVER (" : " FROM (SELECT *, rank() OVER (");
  keyList();
  raw(") AS \"jet rank\", count(*) OVER () AS \"jet count\" FROM (");
  select(query, true, nullptr);
  raw(")) WHERE ");
  if (top.percent) {
    raw("(\"jet rank\" - 1) * 100.0 < " + std::to_string(top.count) + " * \"jet count\"");
  } else {
    raw("\"jet rank\" <= " + std::to_string(static_cast<int64_t>(top.count)));
  }
  keyList();
}

void Printer::unionPart(const Query& part, const std::vector<OutputColumn>& target) {
  if (part.parts.empty() && !part.top && !part.transform && part.orderBy.empty())
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
  for (size_t i = 0; i < query.parts.size(); ++i) {
    if (i > 0) raw(query.parts[i].all ? " UNION ALL " : " UNION ");
    unionPart(*query.parts[i].query, query.columns);
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

void Printer::query(const Query& query) {
  if (++deep_ > maxNesting) throw Failure{{tooComplex, "The statement is too complex.", std::nullopt}};
  const bool before = foreign_;
  const std::string filter = std::move(filter_);
  filter_.clear();
  foreign_ = foreign_ || query.stored;
  if (!query.parts.empty()) {
    unionQuery(query);
  } else if (query.top) {
    topQuery(query);
  } else {
    select(query, false, nullptr);
    orderClause(query);
  }
  foreign_ = before;
  filter_ = filter;
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
