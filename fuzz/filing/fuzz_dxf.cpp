// Reads any bytes as a drawing exchange file; what is read must be written and read again, while a module
// that has a class of entities comes and goes.
#include <cstddef>
#include <cstdint>

#include "host/filing/dxf_reader.h"
#include "host/filing/dxf_writer.h"
#include "zarbo/drawing/kv_leader.h"

namespace {

void writeAndRead(AcDbDatabase& drawing) {
  host::DxfSink sink;
  host::writeDxf(drawing, sink);
  AcDbDatabase again(false);
  host::FilingReport report;
  if (host::readDxf(sink.bytes(), again, report) != Acad::eOk) __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  AcDbDatabase drawing(false);
  host::FilingReport report;
  if (host::readDxf({reinterpret_cast<const char*>(data), size}, drawing, report) != Acad::eOk) return 0;
  KVLeader::rxInit();
  acrxBuildClassHierarchy();
  writeAndRead(drawing);
  KVLeader::rxRemove();
  writeAndRead(drawing);
  return 0;
}
