#include <limits>

#include "engine/engine_object.h"
#include "engine/jet_sql/jet_sql.h"
#include "engine/jet_sql/parser.h"
#include "engine/query_parameters.h"
#include "engine/row_set.h"
#include "platform/text/utf.h"

namespace {

/// Runs one statement and gives the number of rows touched.
int64_t run(Database& database, DatabaseCatalog& catalog, std::string_view sql, jet::RowSink* rows = nullptr,
            const std::vector<jet::Parameter>& parameters = {}) {
  return jet::execute(database.handle(), catalog, sql, parameters, rows);
}

}  // namespace

HRESULT EngineObject::ExecuteSql(BSTR sql, VARIANT* rows, VARIANT_BOOL* ok) {
  return attempt(rows, ok, [&] {
    RowSet set;
    DatabaseCatalog& catalog = freshCatalog();
    run(database(), catalog, toUtf8(viewOf(sql)), &set);
    return set.take();
  });
}

HRESULT EngineObject::ExecuteStatement(BSTR sql, VARIANT_BOOL* ok) {
  return attempt(ok, [&] {
    DatabaseCatalog& catalog = freshCatalog();
    run(database(), catalog, toUtf8(viewOf(sql)));
  });
}

HRESULT EngineObject::ExecuteCommand(BSTR sql, LONG* count, VARIANT_BOOL* ok) {
  if (!count) return E_POINTER;
  *count = 0;
  return attempt(ok, [&] {
    DatabaseCatalog& catalog = freshCatalog();
    const int64_t touched = run(database(), catalog, toUtf8(viewOf(sql)));
    *count = static_cast<LONG>(std::min<int64_t>(touched, std::numeric_limits<LONG>::max()));
  });
}

HRESULT EngineObject::RunQuery(BSTR name, VARIANT parameters, VARIANT* rows, VARIANT_BOOL* ok) {
  return attempt(rows, ok, [&] {
    DatabaseCatalog& catalog = freshCatalog();
    const std::string query = toUtf8(viewOf(name));
    const std::optional<std::string> sql = catalog.findQuery(query);
    if (!sql) fail(jet::itemNotFound, "query '" + query + "'");
    RowSet set;
    run(database(), catalog, *sql, &set, readParameters(parameters));
    return set.take();
  });
}

HRESULT EngineObject::CreateQuery(BSTR name, BSTR sql, VARIANT_BOOL* ok) {
  return attempt(ok, [&] {
    if (database().readOnly()) fail(jet::readOnlyDatabase);
    DatabaseCatalog& catalog = freshCatalog();
    const std::string text = toUtf8(viewOf(sql));
    jet::parseStatement(text);
    catalog.createQuery(toUtf8(viewOf(name)), text);
  });
}

HRESULT EngineObject::LinkTable(BSTR first, BSTR second, BSTR third, VARIANT_BOOL* linked, VARIANT_BOOL* ok) {
  if (!linked) return E_POINTER;
  *linked = VARIANT_FALSE;
  return attempt(ok, [&] {
    if (database().readOnly()) fail(jet::readOnlyDatabase);
    DatabaseCatalog::Link link{toUtf8(viewOf(first)), fullPath(viewOf(second)), toUtf8(viewOf(third))};
    if (link.foreignName.empty()) link.foreignName = link.name;
    DatabaseCatalog& catalog = freshCatalog();
    catalog.requireLinkable(link);
    catalog.createLink(link);
    *linked = VARIANT_TRUE;
  });
}
