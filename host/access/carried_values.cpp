#include "host/access/carried_values.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "host/access/refusal.h"
#include "host/database/group_codes.h"
#include "host/database/group_list.h"

namespace host {
namespace {

/// The groups of a list by their codes, each in its order, and which of them are used.
struct Given {
  std::vector<const ListGroup*> groups;
  size_t used = 0;
};
using GivenByCode = std::map<int, Given>;

/// Of a list without marks everything that isn't of every entity, its owner or its space.
GivenByCode unmarkedGroups(const ListGroups& groups) {
  constexpr int owner = 330, paperSpace = 67, layout = 410, brace = 102;
  GivenByCode own;
  for (const ListGroup& each : groups) {
    const bool isElsewhere = isIdentity(each.code) || isEntityCode(each.code) || each.code == owner ||
                             each.code == paperSpace || each.code == layout || each.code == brace;
    if (!isElsewhere) own[each.code].groups.push_back(&each);
  }
  return own;
}

/// What follows the marks of the object's own subclasses, up to the parts that files have behind it.
GivenByCode ownGroups(const ListGroups& groups) {
  if (!findGroup(groups, 100)) return unmarkedGroups(groups);
  GivenByCode own;
  bool isOwn = false;
  for (const ListGroup& each : groups) {
    if (each.code == 100) {
      isOwn = each.value->text() != L"AcDbEntity";
    } else if (each.code == 0 && isOwn) {
      break;
    } else if (isOwn && each.code > 0 && each.code < 1000) {
      own[each.code].groups.push_back(&each);
    }
  }
  return own;
}

resbuf changed(const resbuf& kept, const ListGroup& given, std::string& bytes) {
  resbuf item = bufferOf(given, bytes);
  const bool wasPlanar = groupKind(kept.restype) == GroupKind::point && std::isnan(kept.resval.rpoint[2]);
  if (wasPlanar) item.resval.rpoint[2] = kept.resval.rpoint[2];
  return item;
}

BrxProxyData* carriedData(AcDbObject& object) {
  if (auto* const entity = AcDbProxyEntity::cast(&object)) return &entity->data();
  if (auto* const other = AcDbProxyObject::cast(&object)) return &other->data();
  return nullptr;
}

}  // namespace

void takeCarriedValues(AcDbObject& object, const ListGroups& groups) {
  BrxProxyData* const data = carriedData(object);
  if (!data) return;
  GivenByCode given = ownGroups(groups);
  GroupList made;
  bool isOwn = true;
  for (const resbuf* each = data->groups->head(); each; each = each->rbnext) {
    if (each->restype == 0) isOwn = false;
    const auto found = isOwn ? given.find(each->restype) : given.end();
    if (found == given.end()) {
      made.append(*each);
      continue;
    }
    require(found->second.used < found->second.groups.size(), Errno::badField);
    std::string bytes;
    made.append(changed(*each, *found->second.groups[found->second.used++], bytes));
  }
  for (const auto& [code, all] : given) require(all.used == all.groups.size(), Errno::badField);
  object.assertWriteEnabled();
  *data->groups = std::move(made);
}

}  // namespace host
