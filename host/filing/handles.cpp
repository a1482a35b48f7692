#include "host/filing/handles.h"

#include <vector>

#include "host/database/stubs.h"

namespace host {

bool giveHandle(AcDbDatabase& drawing, AcDbObjectId id, AcDbHandle handle) {
  AcDbDatabaseImp& imp = drawing.imp();
  AcDbStub& stub = *id.stub();
  if (!handle || handle >= handleLimit || handle == stub.handle || imp.find(handle))
    return handle == stub.handle;
  imp.slot(stub.handle) = nullptr;
  stub.handle = handle;
  imp.slot(handle) = &stub;
  imp.nextHandle = std::max(imp.nextHandle, handle + 1);
  return true;
}

void moveHandles(AcDbDatabase& drawing, AcDbHandle first) {
  AcDbDatabaseImp& imp = drawing.imp();
  const AcDbHandle start = std::max(first, imp.nextHandle);
  imp.nextHandle = start;
  for (AcDbStub& each : imp.stubs) giveHandle(drawing, AcDbObjectId(&each), imp.nextHandle);
}

void settleNextHandle(AcDbDatabase& drawing, AcDbHandle seed) {
  AcDbDatabaseImp& imp = drawing.imp();
  imp.nextHandle = seed < handleLimit ? std::max<AcDbHandle>(seed, 1) : 1;
  for (const AcDbStub& each : imp.stubs) imp.nextHandle = std::max(imp.nextHandle, each.handle + 1);
}

AcDbObjectId addWithHandle(AcDbDatabase& drawing, AcDbObject* object, AcDbObjectId owner, AcDbHandle handle) {
  AcDbObjectId id;
  if (handle >= handleLimit) handle = 0;
  if (drawing.addAcDbObject(id, object, owner, handle) != Acad::eOk) drawing.addAcDbObject(id, object, owner);
  object->close();
  return id;
}

}  // namespace host
