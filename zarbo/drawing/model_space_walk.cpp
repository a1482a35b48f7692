#include <memory>

#include "brx/db_block.h"
#include "brx/db_calls.h"
#include "brx/db_database.h"
#include "zarbo/drawing/selection_functions.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"
#include "zarbo/frame/list_builder.h"
#include "zarbo/support/utilities.h"

namespace {

/// Calls back with each entity of model space that isn't erased, in database order.
template <class Visit>
void walkModelSpace(Visit visit) {
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  AcDbBlockTable* table = nullptr;
  if (!drawing || drawing->getBlockTable(table, AcDb::kForRead) != Acad::eOk) return;
  AcDbBlockTableRecord* opened = nullptr;
  const Acad::ErrorStatus status = table->getAt(ACDB_MODEL_SPACE, opened, AcDb::kForRead);
  table->close();
  if (status != Acad::eOk) return;
  AcDbBlockTableRecordIterator* iterator = nullptr;
  if (opened->newIterator(iterator) == Acad::eOk) {
    const std::unique_ptr<AcDbBlockTableRecordIterator> owner(iterator);
    for (; !iterator->done(); iterator->step()) {
      AcDbEntity* entity = nullptr;
      if (iterator->getEntity(entity, AcDb::kForRead) != Acad::eOk) continue;
      visit(*entity);
      entity->close();
    }
  }
  opened->close();
}

template <class Test>
void returnEntitiesThat(Test passes) {
  LispList list;
  beginList(list);
  walkModelSpace([&](const AcDbEntity& entity) {
    ads_name name;
    if (passes(entity) && acdbGetAdsName(name, entity.objectId()) == Acad::eOk) {
      appendValue(list, LispAtom::entity(name));
    }
  });
  endListAndReturn(list);
}

template <class Kind>
bool isKindOf(const AcDbEntity& entity) {
  return entity.isKindOf(Kind::desc());
}

/// References to the block of a name. Neighbours often are references to the same block, whose name is
/// looked at once.
class ReferenceTo {
 public:
  explicit ReferenceTo(std::wstring name) : name_(std::move(name)) {}

  bool operator()(const AcDbEntity& entity) {
    if (!isKindOf<AcDbBlockReference>(entity)) return false;
    const AcDbObjectId record = static_cast<const AcDbBlockReference&>(entity).blockTableRecord();
    if (!(record == lastRecord_)) {
      const AcDbObjectPointer<AcDbBlockTableRecord> block(record);
      lastVerdict_ = block.object() && equalNoCase(block->getName(), name_);
      lastRecord_ = record;
    }
    return lastVerdict_;
  }

 private:
  std::wstring name_;
  AcDbObjectId lastRecord_;
  bool lastVerdict_ = false;
};

}  // namespace

int ssgetXBlock() {
  acedRetNil();
  LispArgs args;
  std::wstring name;
  if (getString(args.cursor, name)) {
    returnEntitiesThat(ReferenceTo(name));
  } else {
    returnEntitiesThat(isKindOf<AcDbBlockReference>);
  }
  return done;
}

int ssgetXCircle() {
  returnEntitiesThat(isKindOf<AcDbCircle>);
  return done;
}

int ssgetXPolyline() {
  returnEntitiesThat(isKindOf<AcDbPolyline>);
  return done;
}

int ssgetXAll() {
  returnEntitiesThat([](const AcDbEntity&) { return true; });
  return done;
}
