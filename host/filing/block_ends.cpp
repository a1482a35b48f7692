#include "host/filing/block_ends.h"

#include <cwchar>

#include "host/filing/handles.h"
#include "host/filing/object_walk.h"
#include "platform/text/hex.h"

namespace host {
namespace {

constexpr const ACHAR* beginName = L"BLOCK";
constexpr const ACHAR* endName = L"ENDBLK";

/// An end as it is kept: its name under code 0, its handle, its layer.
void keepEnd(const ACHAR* name, AcDbHandle handle, const std::wstring& layer, AcDbBlockTableRecord& block) {
  GroupList& kept = extrasOf(block).kept;
  kept.append(0, name);
  kept.append(5, hexText(handle).c_str());
  if (!layer.empty()) kept.append(8, layer.c_str());
}

struct BlockEnd {
  AcDbHandle handle = 0;
  const ACHAR* layer = L"0";
};

BlockEnd findEnd(const AcDbBlockTableRecord& block, const ACHAR* name) {
  BlockEnd found;
  const AcDbObjectExtras* const extras = HostAccess::extras(block);
  bool inside = false;
  for (const resbuf* each = extras ? extras->kept.head() : nullptr; each; each = each->rbnext) {
    if (each->restype == 0) inside = std::wcscmp(each->resval.rstring, name) == 0;
    if (inside && each->restype == 5) found.handle = readHex(each->resval.rstring).value_or(0);
    if (inside && each->restype == 8) found.layer = each->resval.rstring;
  }
  return found;
}

/// The handle of the file, if no object has it, or a new one; no other object gets it later.
AcDbHandle reserve(AcDbDatabase& drawing, AcDbHandle wanted) {
  AcDbDatabaseImp& imp = drawing.imp();
  const AcDbStub* const stub = wanted ? imp.find(wanted) : nullptr;
  const bool isFree = wanted && wanted < handleLimit && (!stub || !stub->object);
  return isFree ? (stub ? stub : &imp.make(drawing, wanted))->handle : imp.make(drawing, 0).handle;
}

void writeHead(const AcDbBlockTableRecord& block, const ACHAR* name, DxfSink& sink) {
  const BlockEnd end = findEnd(block, name);
  sink.text(0, name);
  sink.handle(5, end.handle);
  sink.handle(330, block.handle());
  sink.word(100, "AcDbEntity");
  if (block.objectId() == block.database()->paperSpaceId()) sink.integer(67, 1);
  sink.text(8, end.layer);
}

}  // namespace

void readBlockBegin(const DxfRecord& record, AcDbBlockTableRecord& block, DxfObjects& objects) {
  keepEnd(beginName, reserve(objects.drawing(), record.handle), objects.text(record, 8), block);
  double origin[3] = {};
  for (int i = 0; i < 3; ++i) {
    if (const DxfGroup* const group = record.find(10 + 10 * i)) group->real(origin[i]);
  }
  constexpr int64_t countedAnew = 2;  // whether it has attribute definitions
  AcDbStub& stub = *block.objectId().stub();
  stub.writing = true;
  HostAccess::setBlock(block, asPnt3d(origin),
                       static_cast<Adesk::Int16>(record.integer(70) & 127 & ~countedAnew),
                       objects.text(record, 1), objects.text(record, 4));
  stub.writing = false;
}

void readBlockEnd(const DxfRecord& record, AcDbBlockTableRecord& block, DxfObjects& objects) {
  keepEnd(endName, reserve(objects.drawing(), record.handle), objects.text(record, 8), block);
}

void prepareBlockEnds(AcDbBlockTableRecord& block) {
  for (const ACHAR* const name : {beginName, endName}) {
    if (!findEnd(block, name).handle) keepEnd(name, reserve(*block.database(), 0), L"", block);
  }
}

void writeBlockBegin(const AcDbBlockTableRecord& block, DxfSink& sink) {
  writeHead(block, beginName, sink);
  sink.word(100, "AcDbBlockBegin");
  sink.text(2, block.getName());
  sink.integer(70, HostAccess::flags(block) | (block.hasAttributeDefinitions() ? 2 : 0));
  const AcGePoint3d origin = block.origin();
  sink.real(10, origin.x), sink.real(20, origin.y), sink.real(30, origin.z);
  sink.text(3, block.getName());
  sink.text(1, block.pathName());
  if (!block.comments().empty()) sink.text(4, block.comments());
}

void writeBlockEnd(const AcDbBlockTableRecord& block, DxfSink& sink) {
  writeHead(block, endName, sink);
  sink.word(100, "AcDbBlockEnd");
}

}  // namespace host
