#include "brx/db_database.h"
#include "zarbo/drawing/kv_leader.h"
#include "zarbo/support/current_drawing.h"

/// Filing of the leader. The block reference is never filed: it follows from the fields.

namespace {

constexpr Adesk::Int32 newestVersion = 2;
constexpr const ACHAR* subclass = L"KVLeader";

/// A block that is gone isn't filed, but undo must be able to bring it back.
bool isFiled(const AcDbObjectId& block, AcDb::FilerType filer) {
  return block.isValid() && (!block.isErased() || filer == AcDb::kUndoFiler);
}

}  // namespace

Acad::ErrorStatus KVLeader::dwgOutFields(AcDbDwgFiler* filer) const {
  AcDbCurve::dwgOutFields(filer);
  Acad::ErrorStatus status = filer->writeInt32(newestVersion);
  if (status != Acad::eOk) return status;
  for (const AcGePoint3d* each : {&start_, &middle_, &end_}) {
    if ((status = filer->writePoint3d(*each)) != Acad::eOk) return status;
  }
  if ((status = filer->writeDouble(offset_)) != Acad::eOk) return status;
  const bool hasBlock = isFiled(block_, filer->filerType());
  if ((status = filer->writeBool(hasBlock)) != Acad::eOk) return status;
  if (hasBlock && (status = filer->writeHardPointerId(block_)) != Acad::eOk) return status;
  return filer->filerStatus();
}

Acad::ErrorStatus KVLeader::dwgInFields(AcDbDwgFiler* filer) {
  assertWriteEnabled();
  AcDbCurve::dwgInFields(filer);
  Adesk::Int32 version = 0;
  const Acad::ErrorStatus status = filer->readInt32(&version);
  if (status != Acad::eOk) return status;
  if (version > newestVersion) return Acad::eMakeMeProxy;
  switch (version) {
    case 1:
      return readVersion1(filer);
    case 2:
      return readVersion2(filer);
    default:
      return filer->filerStatus();
  }
}

Acad::ErrorStatus KVLeader::readPointsAndOffset(AcDbDwgFiler* filer) {
  for (AcGePoint3d* each : {&start_, &middle_, &end_}) {
    const Acad::ErrorStatus status = filer->readPoint3d(each);
    if (status != Acad::eOk) return status;
  }
  return filer->readDouble(&offset_);
}

Acad::ErrorStatus KVLeader::readBlock(AcDbDwgFiler* filer) {
  block_.setNull();
  bool hasBlock = false;
  Acad::ErrorStatus status = filer->readBool(&hasBlock);
  if (status != Acad::eOk) return status;
  if (hasBlock) {
    status = filer->readHardPointerId(&block_);
    // A block that has left the drawing leaves a leader of two bare legs.
    if (status != Acad::eOk && status != Acad::eUnknownHandle) return status;
  }
  reference_.setBlockTableRecord(block_);
  updateReference();
  setOffset(offset_);
  return Acad::eOk;
}

// The first version kept the offset in sheet units.
Acad::ErrorStatus KVLeader::readVersion1(AcDbDwgFiler* filer) {
  Acad::ErrorStatus status = readPointsAndOffset(filer);
  if (status != Acad::eOk) return status;
  if (const AcDbDatabase* const drawing = currentDatabase()) offset_ *= drawing->dimscale();
  status = readBlock(filer);
  return status == Acad::eOk ? filer->filerStatus() : status;
}

Acad::ErrorStatus KVLeader::readVersion2(AcDbDwgFiler* filer) {
  Acad::ErrorStatus status = readPointsAndOffset(filer);
  if (status != Acad::eOk) return status;
  status = readBlock(filer);
  if (status != Acad::eOk) return status;
  reference_.setLayer(layerId());
  return filer->filerStatus();
}

Acad::ErrorStatus KVLeader::dxfOutFields(AcDbDxfFiler* filer) const {
  AcDbCurve::dxfOutFields(filer);
  filer->writeSubclass(subclass);
  filer->writePoint3d(10, start_);
  filer->writePoint3d(11, middle_);
  filer->writePoint3d(12, end_);
  filer->writeDouble(40, offset_);
  return filer->filerStatus();
}

Acad::ErrorStatus KVLeader::dxfInFields(AcDbDxfFiler* filer) {
  assertWriteEnabled();
  const Acad::ErrorStatus status = AcDbCurve::dxfInFields(filer);
  if (status != Acad::eOk) return status;
  if (!filer->atSubclassData(subclass)) return Acad::eBadDxfSequence;
  resbuf item{};
  while (filer->readItem(&item) == Acad::eOk) {
    switch (item.restype) {
      case 10:
        start_ = asPnt3d(item.resval.rpoint);
        break;
      case 11:
        middle_ = asPnt3d(item.resval.rpoint);
        break;
      case 12:
        end_ = asPnt3d(item.resval.rpoint);
        break;
      case 40:
        setOffset(item.resval.rreal);
        break;
    }
  }
  updateReference();
  return filer->filerStatus();
}
