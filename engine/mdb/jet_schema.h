#pragma once

#include "engine/jet_sql/catalog.h"
#include "engine/mdb/jet_file.h"

namespace mdb {

/// The SQL of a stored query, put together from the parts that the file keeps.
struct JetQuery {
  std::string name, sql;
  std::string failure;  ///< why there is no `sql`
};
/// Stored queries that users see, by name; those that forms keep for themselves are left out.
std::vector<JetQuery> readQueries(JetFile& file);

struct JetRelation {
  jet::Relation relation;
  bool enforced = true;
};
/// Relations between users' tables.
std::vector<JetRelation> readRelations(JetFile& file);

/// Tables of other files that the file shows as its own: a line for each, with where it comes from.
std::vector<std::string> describeLinks(JetFile& file);

}  // namespace mdb
