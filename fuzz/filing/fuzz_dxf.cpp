// Reads any bytes as a drawing exchange file; what is read must be written and read again, while the modules
// that have classes of entities come and go: their entities are revived, drawn on, and become proxies again.
#include <cstddef>
#include <cstdint>

#include "host/filing/dxf_reader.h"
#include "host/filing/dxf_writer.h"
#include "solid/hvac_solid.h"
#include "zarbo/drawing/kv_leader.h"

namespace {

void writeAndRead(AcDbDatabase& drawing) {
  host::DxfSink sink;
  host::writeDxf(drawing, sink);
  AcDbDatabase again(false);
  host::FilingReport report;
  if (host::readDxf(sink.bytes(), again, report) != Acad::eOk) __builtin_trap();
}

/// What a command does with what it finds.
void touch(AcDbDatabase& drawing) {
  AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId());
  if (!space.object()) return;
  const std::vector<AcDbObjectId> ids = space->entityIds();
  const AcGeMatrix3d matrix = AcGeMatrix3d::rotation(0.5, {0, 0, 1}) * AcGeMatrix3d::translation({1, 2, 3});
  for (const AcDbObjectId& id : ids) {
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
    if (!entity.object()) continue;
    AcDbExtents extents;
    entity->getGeomExtents(extents);
    entity->transformBy(matrix);
    AcDbVoidPtrArray pieces;
    entity->explode(pieces);
    for (void* each : pieces) delete static_cast<AcDbEntity*>(each);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  AcDbDatabase drawing(false);
  host::FilingReport report;
  if (host::readDxf({reinterpret_cast<const char*>(data), size}, drawing, report) != Acad::eOk) return 0;
  HvacSolid::rxInit();
  KVLeader::rxInit();
  acrxBuildClassHierarchy();
  writeAndRead(drawing);
  touch(drawing);
  KVLeader::rxRemove();
  writeAndRead(drawing);
  HvacSolid::rxRemove();
  writeAndRead(drawing);
  return 0;
}
