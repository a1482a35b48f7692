#include "zarbo/ductsolids/solid_functions.h"

#include "brx/db_calls.h"
#include "zarbo/drawing/model_space.h"
#include "zarbo/ductsolids/fitting.h"
#include "zarbo/ductsolids/solid_results.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/object_args.h"

/// Skins, and the functions on solids that are in the drawing.

void appendEntity(LispList& list, const ACHAR* key, AcDbObjectId entity) {
  ads_name name;
  if (!entity.isNull() && acdbGetAdsName(name, entity) == Acad::eOk) {
    appendPair(list, key, LispAtom::entity(name));
  } else {
    appendPair(list, key, nullptr);
  }
}

bool solidModuleIsThere() {
  if (kv_hvacSolid::desc()) return true;
  acutPrintf(L"\nThe solid module kv_kv-solidBrx21x64.arx isn't loaded.\n");
  return false;
}

int kvDrawTripleSkin() {
  acedRetNil();
  LispArgs args;
  double thickness = 0;
  if (!getNumber(args.cursor, thickness)) return wrongType;
  skipListBegin(args.cursor);
  AcGePoint3dArray outline;
  for (AcGePoint3d point; getPoint3d(args.cursor, point);) outline.append(point);
  if (!solidModuleIsThere()) return failedVisibly;
  NewSolid solid = newSolid(BrxSolidKind::other);
  if (!solid->addSkin(outline, thickness)) return done;
  LispList list;
  beginList(list);
  appendEntity(list, L"en", appendSolid(std::move(solid)));
  endListAndReturn(list);
  return done;
}

int kvTripleUnion() {
  acedRetNil();
  LispArgs args;
  ads_name firstName, secondName;
  if (!getEntityName(args.cursor, firstName) || !getEntityName(args.cursor, secondName)) return wrongType;
  AcDbObjectId first, second;
  if (acdbGetObjectId(first, firstName) != Acad::eOk) return wrongType;
  AcDbObjectPointer<kv_hvacSolid> kept(first, AcDb::kForWrite);
  if (kept.openStatus() != Acad::eOk || acdbGetObjectId(second, secondName) != Acad::eOk) return wrongType;
  AcDbObjectPointer<kv_hvacSolid> other(second, AcDb::kForWrite);
  if (other.openStatus() != Acad::eOk) return wrongType;
  if (kept->doUnion(other)) other->erase();
  return done;
}

int kvExplodeSolid() {
  acedRetNil();
  LispArgs args;
  if (args.empty()) return done;
  AcDbObjectId id;
  if (!getObjectId(args.cursor, id)) return wrongType;
  AcDbObjectPointer<kv_hvacSolid> solid(id, AcDb::kForWrite);
  if (solid.openStatus() != Acad::eOk) return badData;
  AcDbVoidPtrArray pieces;
  solid->explode(pieces);
  LispList list;
  beginList(list);
  for (void* each : pieces) {
    auto* const piece = static_cast<AcDbEntity*>(each);
    appendEntity(list, L"FACE", appendAndClose(piece) ? piece->objectId() : AcDbObjectId());
  }
  endListAndReturn(list);
  return done;
}
