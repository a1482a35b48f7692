#include "zarbo/drawing/entity_functions.h"

#include "brx/db_database.h"
#include "brx/db_dictionary.h"
#include "brx/db_faces.h"
#include "brx/db_leader.h"
#include "brx/db_polylines.h"
#include "zarbo/drawing/entity_result.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/list_builder.h"
#include "zarbo/frame/object_args.h"
#include "zarbo/support/current_drawing.h"

namespace {

LispAtom pointAtom(const AcGePoint3d& point) { return LispAtom::point(point.x, point.y, point.z); }

}  // namespace

int leaderCreate() {
  acedRetNil();
  LispArgs args;
  auto* const leader = new AcDbLeader;
  AcGePoint3d vertex;
  while (getPoint3d(args.cursor, vertex)) leader->appendVertex(vertex);
  leader->setDatabaseDefaults(currentDatabase());
  appendAndReturnName(leader);
  return done;
}

int kvSetColor() {
  LispArgs args;
  AcDbObjectId id;
  int32_t red, green, blue;
  if (!getObjectId(args.cursor, id) || !getLong(args.cursor, red) || !getLong(args.cursor, green) ||
      !getLong(args.cursor, blue))
    return wrongType;
  const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
  if (entity.openStatus() != Acad::eOk) return badData;
  AcCmColor color;
  color.setRGB(static_cast<Adesk::UInt8>(red), static_cast<Adesk::UInt8>(green),
               static_cast<Adesk::UInt8>(blue));
  entity->setColor(color);
  return done;
}

int entitySetColor() {
  LispArgs args;
  AcDbObjectId id;
  int32_t index;
  if (!getObjectId(args.cursor, id) || !getLong(args.cursor, index)) return wrongType;
  const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
  AcCmColor color;
  if (entity.openStatus() == Acad::eOk &&
      color.setColorIndex(static_cast<Adesk::UInt16>(index)) == Acad::eOk) {
    entity->setColor(color);
  }
  return done;
}

int entityGetGeomExtents() {
  acedRetNil();
  LispArgs args;
  AcDbObjectId id;
  if (!getObjectId(args.cursor, id)) return wrongType;
  const AcDbObjectPointer<AcDbEntity> entity(id);
  AcDbExtents extents;
  if (entity.openStatus() != Acad::eOk || entity->getGeomExtents(extents) != Acad::eOk) return done;
  LispList list;
  beginList(list);
  appendPair(list, L"min", pointAtom(extents.minPoint()));
  appendPair(list, L"max", pointAtom(extents.maxPoint()));
  endListAndReturn(list);
  return done;
}

int faceMakeEdgeInvisibleAt() {
  acedRetNil();
  LispArgs args;
  AcDbObjectId id;
  int32_t edge;
  if (!getObjectId(args.cursor, id) || !getLong(args.cursor, edge)) return wrongType;
  const AcDbObjectPointer<AcDbFace> face(id, AcDb::kForWrite);
  if (face.openStatus() != Acad::eOk) return done;
  face->makeEdgeInvisibleAt(static_cast<Adesk::UInt16>(edge));
  acedRetT();
  return done;
}

int polyline2dSetCurveType() {
  acedRetNil();
  LispArgs args;
  AcDbObjectId id;
  std::wstring type;
  if (!getObjectId(args.cursor, id) || !getString(args.cursor, type)) return wrongType;
  const AcDbObjectPointer<AcDb2dPolyline> polyline(id, AcDb::kForWrite);
  if (polyline.openStatus() != Acad::eOk) return done;
  if (type == L"f") polyline->curveFit();
  if (type == L"d") polyline->straighten();
  if (type == L"s") polyline->splineFit();
  acedRetT();
  return done;
}

int kvSendToBack() {
  acedRetNil();
  LispArgs args;
  AcDbObjectId id;
  if (!getObjectId(args.cursor, id)) return wrongType;
  const AcDbObjectPointer<AcDbEntity> entity(id);
  if (entity.openStatus() != Acad::eOk) return done;
  const AcDbObjectPointer<AcDbBlockTableRecord> owner(entity->ownerId());
  AcDbSortentsTable* order = nullptr;
  if (owner.openStatus() != Acad::eOk || owner->getSortentsTable(order, AcDb::kForWrite) != Acad::eOk)
    return done;
  AcDbObjectIdArray ids;
  ids.append(id);
  order->moveToBottom(ids);
  order->close();
  acedRetT();
  return done;
}
