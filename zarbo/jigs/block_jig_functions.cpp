#include <memory>

#include "brx/db_block.h"
#include "zarbo/drawing/block_lookup.h"
#include "zarbo/drawing/entity_result.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/object_args.h"
#include "zarbo/jigs/entity_set_jigs.h"
#include "zarbo/jigs/jig_functions.h"
#include "zarbo/jigs/multi_block_jig.h"

namespace {

/// A reference to each block that is there; the names of others are passed over.
AcDbEntityPtrArray newReferences(ArgCursor& cursor, double first, double second) {
  AcDbEntityPtrArray references(0, 8);
  std::wstring name;
  while (getString(cursor, name)) {
    AcDbObjectId block;
    if (!lookUpBlock(name, block)) continue;
    auto* const reference = new AcDbBlockReference;
    reference->setBlockTableRecord(block);
    reference->setScaleFactors({first, second, first});
    references.append(reference);
  }
  return references;
}

/// Clones of the entities that a list names, up to the first that can't be opened. False without a list.
bool getClones(ArgCursor& cursor, AcDbEntityPtrArray& clones) {
  if (!skipListBegin(cursor)) return false;
  AcDbObjectId id;
  while (getObjectId(cursor, id)) {
    const AcDbObjectPointer<AcDbEntity> entity(id);
    if (entity.openStatus() != Acad::eOk) break;
    clones.append(static_cast<AcDbEntity*>(entity->clone()));
  }
  return true;
}

/// Prompt, base point, entities; `giveResult` when the user chose something.
template <class Jig, class GiveResult>
int dragEntities(GiveResult giveResult) {
  acedRetNil();
  LispArgs args;
  std::wstring prompt;
  AcGePoint3d base;
  if (!getString(args.cursor, prompt) || !getPoint3d(args.cursor, base)) return wrongType;
  Jig jig(prompt, base);
  AcDbEntityPtrArray clones(0, 8);
  if (!getClones(args.cursor, clones)) return wrongType;
  if (clones.isEmpty()) return done;
  jig.setEntityList(clones);
  if (jig.run() && !jig.endedByEnter()) giveResult(jig);
  return done;
}

}  // namespace

int blockReferenceJig() {
  acedRetNil();
  LispArgs args;
  bool asksRotation;
  double first, second;
  if (!getFlag(args.cursor, asksRotation) || !getReal(args.cursor, first) || !getReal(args.cursor, second)) {
    return wrongType;
  }
  multiBlockJig jig(asksRotation, first);
  AcGePoint3d point;
  if (getPoint3d(args.cursor, point)) {
    jig.presetInsertionPoint(point);
  } else {
    bool ignored;
    getFlag(args.cursor, ignored);
  }
  const AcDbEntityPtrArray references = newReferences(args.cursor, first, second);
  if (references.isEmpty()) return done;
  jig.setEntityList(references);
  LispList result;
  if (jig.run(result)) endListAndReturn(result);
  return done;
}

int kvMultiRotateJig() {
  return dragEntities<MultiRotateJig>([](const MultiRotateJig& jig) { acedRetReal(jig.angle()); });
}

int kvMultiMoveJig() {
  return dragEntities<MultiMoveJig>([](const MultiMoveJig& jig) { returnPoint(jig.currentPoint()); });
}
