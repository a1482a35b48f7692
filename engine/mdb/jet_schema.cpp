#include "engine/mdb/jet_schema.h"

#include <algorithm>
#include <map>

#include "engine/mdb/jet_rows.h"
#include "engine/text/collation.h"

namespace mdb {
namespace {

enum RelationFlag : int64_t {
  notEnforced = 0x2,
  cascadesUpdates = 0x100,
  cascadesDeletes = 0x1000,
  setsNull = 0x2000,
};
enum ObjectKind : int64_t { linkThroughDriver = 4, linkToFile = 6 };

bool isUsers(JetFile& file, const std::string& table) {
  const JetObject* object = file.findTable(table);
  return object && !object->system;
}

}  // namespace

std::vector<JetRelation> readRelations(JetFile& file) {
  struct Pair {
    int64_t place;
    std::string column, foreignColumn;
  };
  std::map<std::string, std::pair<JetRelation, std::vector<Pair>>, TextLess> found;
  for (JetRows rows(file, "MSysRelationships"); rows.next();) {
    auto& [each, pairs] = found[rows.text("szRelationship")];
    const int64_t flags = rows.number("grbit");
    jet::Relation& relation = each.relation;
    relation.name = rows.text("szRelationship");
    relation.table = rows.text("szObject");
    relation.foreignTable = rows.text("szReferencedObject");
    relation.cascadeUpdate = flags & cascadesUpdates;
    relation.cascadeDelete = flags & cascadesDeletes;
    relation.setNullOnDelete = flags & setsNull;
    each.enforced = !(flags & notEnforced);
    pairs.push_back({rows.number("icolumn"), rows.text("szColumn"), rows.text("szReferencedColumn")});
  }
  std::vector<JetRelation> relations;
  for (auto& [name, entry] : found) {
    auto& [each, pairs] = entry;
    if (!isUsers(file, each.relation.table) && !isUsers(file, each.relation.foreignTable)) continue;
    std::sort(pairs.begin(), pairs.end(), [](auto& a, auto& b) { return a.place < b.place; });
    for (Pair& pair : pairs) {
      each.relation.columns.push_back(std::move(pair.column));
      each.relation.foreignColumns.push_back(std::move(pair.foreignColumn));
    }
    relations.push_back(std::move(each));
  }
  return relations;
}

std::vector<std::string> describeLinks(JetFile& file) {
  std::vector<std::string> links;
  for (JetRows rows(file, "MSysObjects"); rows.next();) {
    const int64_t kind = rows.number("Type");
    if (kind != linkToFile && kind != linkThroughDriver) continue;
    const std::string& from = kind == linkToFile ? rows.text("Database") : rows.text("Connect");
    links.push_back("'" + rows.text("Name") + "', which is '" + rows.text("ForeignName") + "' of " + from);
  }
  return links;
}

}  // namespace mdb
