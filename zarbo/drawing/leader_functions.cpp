#include "zarbo/drawing/leader_functions.h"

#include "brx/db_calls.h"
#include "brx/db_database.h"
#include "zarbo/drawing/block_lookup.h"
#include "zarbo/drawing/entity_result.h"
#include "zarbo/drawing/kv_leader.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/list_builder.h"
#include "zarbo/frame/object_args.h"
#include "zarbo/support/current_drawing.h"

namespace {

struct LeaderPoints {
  AcGePoint3d start, middle, end;
};

bool getLeaderPoints(ArgCursor& cursor, LeaderPoints& points) {
  return skipListBegin(cursor) && getPoint3d(cursor, points.start) && getPoint3d(cursor, points.middle) &&
         getPoint3d(cursor, points.end) && skipListEnd(cursor);
}

bool findLayer(const std::wstring& name, AcDbObjectId& layer) {
  AcDbDatabase* const drawing = currentDatabase();
  AcDbLayerTable* table = nullptr;
  if (!drawing || drawing->getLayerTable(table) != Acad::eOk) return false;
  const Acad::ErrorStatus status = table->getAt(name.c_str(), layer);
  table->close();
  return status == Acad::eOk;
}

/// Callers give offsets in sheet units; the entity keeps drawing units.
double toDrawingUnits(double offset) {
  const AcDbDatabase* const drawing = currentDatabase();
  return drawing ? offset * drawing->dimscale() : offset;
}

using WritableLeader = AcDbSmartObjectPointer<KVLeader>;

void appendObject(LispList& list, const AcDbEntity* entity) {
  if (!entity) {
    appendPair(list, L"obj", nullptr);
    return;
  }
  ads_name name;
  if (acdbGetAdsName(name, entity->objectId()) == Acad::eOk) appendPair(list, L"obj", LispAtom::entity(name));
}

}  // namespace

int kvLeaderInsert() {
  LispArgs args;
  LeaderPoints points;
  std::wstring layerName, blockName;
  AcDbObjectId layer, block;
  double offset;
  if (!getLeaderPoints(args.cursor, points) || !getString(args.cursor, layerName)) return wrongType;
  if (!findLayer(layerName, layer)) return done;
  if (!getString(args.cursor, blockName)) return wrongType;
  if (!lookUpBlock(blockName, block)) return done;
  if (!getNumber(args.cursor, offset)) return wrongType;

  appendAndReturnName(
      new KVLeader(points.start, points.middle, points.end, toDrawingUnits(offset), block, layer));
  return done;
}

int kvLeaderSetPoints() {
  LispArgs args;
  AcDbObjectId id;
  LeaderPoints points;
  if (!getObjectId(args.cursor, id) || !getLeaderPoints(args.cursor, points)) return wrongType;
  WritableLeader leader(id, AcDb::kForWrite);
  if (leader.openStatus() != Acad::eOk) return done;
  leader->setPoints(points.start, points.middle, points.end);
  acedRetT();
  return done;
}

int kvLeaderSetBlock() {
  LispArgs args;
  AcDbObjectId id;
  std::wstring blockName;
  if (!getObjectId(args.cursor, id) || !getString(args.cursor, blockName)) return wrongType;
  WritableLeader leader(id, AcDb::kForWrite);
  if (leader.openStatus() != Acad::eOk) return done;
  // T also for an unknown block: the application has told the user of it by then.
  leader->setBlock(blockName);
  acedRetT();
  return done;
}

int kvLeaderSetOffset() {
  LispArgs args;
  AcDbObjectId id;
  double offset;
  if (!getObjectId(args.cursor, id) || !getNumber(args.cursor, offset)) return wrongType;
  WritableLeader leader(id, AcDb::kForWrite);
  if (leader.openStatus() != Acad::eOk) return done;
  leader->setOffset(toDrawingUnits(offset));
  acedRetT();
  return done;
}

int kvLeaderExplode() {
  LispArgs args;
  AcDbObjectId id;
  if (!getObjectId(args.cursor, id)) return wrongType;
  AcDbSmartObjectPointer<KVLeader> leader(id, AcDb::kForRead);
  if (leader.openStatus() != Acad::eOk) return done;
  AcDbEntityPtrArray parts(0, 10);
  leader->explode(parts);
  LispList list;
  beginList(list);
  for (const AcDbEntity* each : parts) appendObject(list, each);
  endListAndReturn(list);
  return done;
}
