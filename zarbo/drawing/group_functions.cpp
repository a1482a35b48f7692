#include "brx/db_database.h"
#include "brx/db_dictionary.h"
#include "zarbo/drawing/entity_functions.h"
#include "zarbo/drawing/entity_result.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"

namespace {

using GroupDictionary = AcDbObjectPointer<AcDbDictionary>;

AcDbObjectId groupDictionary() {
  const AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  return drawing ? drawing->groupDictionaryId() : AcDbObjectId{};
}

void createGroup(AcDbDictionary& groups, const std::wstring& name, bool selectable) {
  if (groups.upgradeOpen() != Acad::eOk) return;
  auto* const group = new AcDbGroup;
  AcDbObjectId id;
  if (groups.setAt(name.c_str(), group, id) != Acad::eOk) {
    delete group;
    return;
  }
  group->setSelectable(selectable);
  returnName(id);
  group->close();
}

}  // namespace

int kvSetGroupSelectable() {
  acedRetNil();
  LispArgs args;
  std::wstring name;
  bool selectable;
  if (!getString(args.cursor, name) || !getFlag(args.cursor, selectable)) return wrongType;
  const GroupDictionary groups(groupDictionary(), AcDb::kForWrite);
  AcDbObjectId id;
  if (groups.openStatus() != Acad::eOk || groups->getAt(name.c_str(), id) != Acad::eOk) return done;
  const AcDbObjectPointer<AcDbGroup> group(id, AcDb::kForWrite);
  if (group.openStatus() != Acad::eOk) return done;
  group->setSelectable(selectable);
  acedRetT();
  return done;
}

int kvGetGroup() {
  acedRetNil();
  LispArgs args;
  std::wstring name;
  if (!getString(args.cursor, name)) return wrongType;
  bool create = false, selectable = false;
  getFlag(args.cursor, create);
  getFlag(args.cursor, selectable);
  const GroupDictionary groups(groupDictionary());
  if (groups.openStatus() != Acad::eOk) return done;
  AcDbObjectId id;
  if (groups->getAt(name.c_str(), id) == Acad::eOk) {
    returnName(id);
  } else if (create) {
    createGroup(*groups.object(), name, selectable);
  }
  return done;
}
