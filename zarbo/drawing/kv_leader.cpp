#include "zarbo/drawing/kv_leader.h"

#include <array>

#include "brx/lisp_calls.h"
#include "zarbo/drawing/block_lookup.h"
#include "zarbo/drawing/model_space.h"
#include "zarbo/support/plane_geometry.h"

ACRX_DEFINE_MEMBERS(KVLeader)

void KVLeader::rxInit() {
  if (gpDesc) {
    auto* const names = static_cast<AcRxDictionary*>(acrxSysRegistry()->at(L"ClassDictionary"));
    const AcRxObject* const registered = names->at(L"KVLeader");
    if (registered == gpDesc) return;
    if (registered) acrx_abort(L"Class mismatch");
  }
  constexpr int dwgVersion = 1, maintenanceVersion = 1, proxyMayBeErased = 1;
  gpDesc = newBrxClass(
      L"KVLeader", L"AcDbCurve", dwgVersion, maintenanceVersion, proxyMayBeErased,
      []() -> AcRxObject* { return new KVLeader; }, AcDbCurve::createOdObjectImp, L"KVLEADER",
      L"\"Leader|Korvane Software, Inc|www.korvane.example\"");
}

void KVLeader::rxRemove() { deleteAcRxClass(desc()); }

KVLeader::KVLeader(const AcGePoint3d& start, const AcGePoint3d& middle, const AcGePoint3d& end, double offset,
                   const AcDbObjectId& block, const AcDbObjectId& layer)
    : start_(start), middle_(middle), end_(end) {
  setLayer(layer);
  block_ = block;
  reference_.setBlockTableRecord(block_);
  reference_.setLayer(layer);
  updateReference();
  setOffset(offset);
}

void KVLeader::setPoints(const AcGePoint3d& start, const AcGePoint3d& middle, const AcGePoint3d& end) {
  assertWriteEnabled();
  start_ = start, middle_ = middle, end_ = end;
  updateReference();
}

void KVLeader::getPoints(AcGePoint3d& start, AcGePoint3d& middle, AcGePoint3d& end) const {
  assertReadEnabled();
  start = start_, middle = middle_, end = end_;
}

void KVLeader::setStartPoint(const AcGePoint3d& point) { setPoints(point, middle_, end_); }
void KVLeader::setMiddlePoint(const AcGePoint3d& point) { setPoints(start_, point, end_); }
void KVLeader::setEndPoint(const AcGePoint3d& point) { setPoints(start_, middle_, point); }

bool KVLeader::setBlock(const std::wstring& name) {
  assertWriteEnabled();
  AcDbObjectId found;
  if (!lookUpBlock(name, found)) return false;
  block_ = found;
  reference_.setBlockTableRecord(block_);
  return true;
}

void KVLeader::setOffset(double offset) {
  assertWriteEnabled();
  offset_ = offset;
  reference_.setScaleFactors({offset, offset, offset});
}

Acad::ErrorStatus KVLeader::setLayer(AcDbObjectId layer, bool doSubents, bool allowHiddenLayer) {
  const Acad::ErrorStatus status = AcDbCurve::setLayer(layer, doSubents, allowHiddenLayer);
  if (status != Acad::eOk || !doSubents) return status;
  return reference_.setLayer(layer, doSubents, allowHiddenLayer);
}

void KVLeader::updateReference() {
  reference_.setPosition(end_);
  reference_.setRotation(angleOfPoints(middle_, end_));
}

AcGePoint3d KVLeader::secondLegEnd() const {
  AcGePoint3d point = end_;
  return polarPoint(point, angleOfPoints(end_, middle_), offset_);
}

Acad::ErrorStatus KVLeader::audit(AcDbAuditInfo*) { return Acad::eOk; }

bool KVLeader::subWorldDraw(AcGiWorldDraw* draw) {
  const AcGePoint3d firstLeg[] = {start_, middle_};
  const AcGePoint3d secondLeg[] = {middle_, secondLegEnd()};
  draw->geometry().polyline(2, firstLeg, nullptr, -1);
  draw->geometry().polyline(2, secondLeg, nullptr, -1);
  const Adesk::UInt16 color = draw->subEntityTraits().color();
  draw->subEntityTraits().setLayer(layerId());
  const bool result = draw->geometry().draw(&reference_);
  draw->subEntityTraits().setColor(color);
  return result;
}

// The block's size belongs to the sheet, not to the model: no transformation changes it.
Acad::ErrorStatus KVLeader::subTransformBy(const AcGeMatrix3d& matrix) {
  setPoints(matrix * start_, matrix * middle_, matrix * end_);
  return Acad::eOk;
}

Acad::ErrorStatus KVLeader::subExplode(AcDbVoidPtrArray& entities) const {
  assertReadEnabled();
  entities.append(new AcDbLine(start_, middle_));
  entities.append(new AcDbLine(middle_, secondLegEnd()));
  return reference_.explode(entities);
}

void KVLeader::explode(AcDbEntityPtrArray& entities, const AcDbObjectId& layer) const {
  auto* const reference = new AcDbBlockReference(reference_.position(), reference_.blockTableRecord());
  reference->setRotation(reference_.rotation());
  reference->setScaleFactors(reference_.scaleFactors());
  const std::array<AcDbEntity*, 3> parts = {new AcDbLine(start_, middle_),
                                            new AcDbLine(middle_, secondLegEnd()), reference};
  for (AcDbEntity* each : parts) {
    each->setLayer(layer);
    each->setLinetype(linetypeId());
    entities.append(appendAndClose(each) ? each : nullptr);
  }
}

void KVLeader::subList() const {
  AcDbCurve::subList();
  const auto print = [](const ACHAR* what, const AcGePoint3d& point) {
    acutPrintf(L"                   %s = %f, %f, %f\n", what, point.x, point.y, point.z);
  };
  print(L"Starting point", start_);
  print(L"Middle point", middle_);
  print(L"End point", end_);
  acutPrintf(L"\n");
  reference_.list();
}

template <class Ask>
Acad::ErrorStatus KVLeader::askParts(Ask ask) const {
  const AcDbLine first(start_, middle_), second(middle_, secondLegEnd());
  for (const AcDbEntity* each :
       {static_cast<const AcDbEntity*>(&first), static_cast<const AcDbEntity*>(&second),
        static_cast<const AcDbEntity*>(&reference_)}) {
    const Acad::ErrorStatus status = ask(*each);
    if (status != Acad::eOk) return status;
  }
  return Acad::eOk;
}

Acad::ErrorStatus KVLeader::subGetGeomExtents(AcDbExtents& extents) const {
  return askParts([&](const AcDbEntity& part) { return part.getGeomExtents(extents); });
}

Acad::ErrorStatus KVLeader::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::Int64 marker,
                                              const AcGePoint3d& pick, const AcGePoint3d& last,
                                              const AcGeMatrix3d& view, AcGePoint3dArray& points,
                                              AcDbIntArray& geometryIds) const {
  return askParts([&](const AcDbEntity& part) {
    return part.getOsnapPoints(mode, marker, pick, last, view, points, geometryIds);
  });
}

Acad::ErrorStatus KVLeader::subIntersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                             AcGePoint3dArray& points, Adesk::Int64 thisMarker,
                                             Adesk::Int64 otherMarker) const {
  return askParts([&](const AcDbEntity& part) {
    return part.intersectWith(other, type, points, thisMarker, otherMarker);
  });
}

Acad::ErrorStatus KVLeader::subIntersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                             const AcGePlane& plane, AcGePoint3dArray& points,
                                             Adesk::Int64 thisMarker, Adesk::Int64 otherMarker) const {
  return askParts([&](const AcDbEntity& part) {
    return part.intersectWith(other, type, plane, points, thisMarker, otherMarker);
  });
}

Acad::ErrorStatus KVLeader::subGetGripPoints(AcGePoint3dArray& points, AcDbIntArray&, AcDbIntArray&) const {
  return subGetStretchPoints(points);
}

Acad::ErrorStatus KVLeader::subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
  return moveStretchPointsAt(indices, offset);
}

Acad::ErrorStatus KVLeader::subGetStretchPoints(AcGePoint3dArray& points) const {
  points.append(start_);
  points.append(middle_);
  points.append(end_);
  return Acad::eOk;
}

Acad::ErrorStatus KVLeader::subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
  const auto moved = [&](int index, const AcGePoint3d& point) {
    return indices.contains(index) ? point + offset : point;
  };
  setPoints(moved(0, start_), moved(1, middle_), moved(2, end_));
  return Acad::eOk;
}
