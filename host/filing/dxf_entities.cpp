#include "host/filing/dxf_entities.h"

#include "brx/db_attributes.h"
#include "brx/db_block.h"
#include "brx/db_polylines.h"
#include "brx/db_proxy.h"
#include "host/database/subentities.h"
#include "host/filing/block_ends.h"
#include "host/filing/dxf_tables.h"
#include "host/filing/handles.h"
#include "host/filing/old_marks.h"
#include "platform/text/utf.h"

namespace host {
namespace {

AcDbBlockTable& blockTable(DxfObjects& objects) {
  return static_cast<AcDbBlockTable&>(*objects.drawing().tableId(AcDbBlockTable::desc()).stub()->object);
}

AcDbBlockTableRecord* findBlock(const std::wstring& name, DxfObjects& objects) {
  AcDbObjectId id;
  if (blockTable(objects).getAt(name.c_str(), id) != Acad::eOk) return nullptr;
  return AcDbBlockTableRecord::cast(id.stub()->object);
}

AcDbBlockTableRecord* makeBlock(const std::wstring& name, DxfObjects& objects) {
  auto* const record = new AcDbBlockTableRecord;
  HostAccess::setName(*record, name);
  const AcDbObjectId table = blockTable(objects).objectId();
  const AcDbObjectId id = addWithHandle(objects.drawing(), record, table, 0);
  HostAccess::addRecord(blockTable(objects), symbolKey(name.c_str()), id);
  return record;
}

/// Subentities follow their owner's record up to the end of the sequence.
bool ownsSubentities(const DxfRecord& record) {
  return record.name == "POLYLINE" || (record.name == "INSERT" && record.integer(66) == 1);
}

bool isSubentity(std::string_view name) { return name == "VERTEX" || name == "ATTRIB" || name == "SEQEND"; }

AcRxClass* subentityClass(const AcDbEntity& owner, const DxfRecord& record) {
  if (record.name == "ATTRIB") return AcDbAttribute::desc();
  if (record.name == "SEQEND") return AcDbSequenceEnd::desc();
  return owner.isKindOf(AcDb3dPolyline::desc()) ? AcDb3dPolylineVertex::desc() : AcDb2dVertex::desc();
}

void addSubentity(AcDbEntity& owner, const DxfRecord& record, DxfObjects& objects) {
  std::unique_ptr<AcDbEntity> made = objects.makeEntity(record, subentityClass(owner, record));
  BrxSubentities& list = *subentitiesOf(owner);
  if (made->isKindOf(AcDbSequenceEnd::desc())) {
    if (list.end.isNull()) list.end = objects.add(made.release(), owner.objectId(), record);
    return;
  }
  const AcDbObjectId id = objects.add(made.release(), owner.objectId(), record);
  HostAccess::setPosition(id.stub(), list.ids.size());
  list.ids.push_back(id);
}

class EntityReader {
 public:
  EntityReader(DxfWalk& walk, DxfObjects& objects) : walk_(walk), objects_(objects) {}

  /// Reads the entity at hand, which may have others behind it that belong to it.
  void read(AcDbBlockTableRecord& block) {
    const bool hasSubentities = ownsSubentities(walk_.record);
    AcDbEntity* const entity = objects_.makeEntity(walk_.record).release();
    const AcDbObjectId id = objects_.add(entity, block.objectId(), walk_.record);
    HostAccess::addEntity(block, id);
    if (hasSubentities) readSubentities(*entity);
  }

 private:
  void readSubentities(AcDbEntity& owner) {
    AcDbProxyEntity* const proxy = AcDbProxyEntity::cast(&owner);
    while (isSubentity(walk_.comes()) && walk_.next()) {
      if (proxy) {
        keepSubentity(*proxy);
      } else if (subentitiesOf(owner)) {
        addSubentity(owner, walk_.record, objects_);
      }
      if (walk_.record.name == "SEQEND") return;
    }
    objects_.complain(walk_.record, L"the end of the sequence that belongs to it is missing");
  }

  /// What old files leave out is given: marks, a handle, the owner.
  void keepSubentity(AcDbProxyEntity& owner) {
    DxfRecord record = withMarks(walk_.record);
    if (!record.handle) record.handle = objects_.drawing().imp().make(objects_.drawing(), 0).handle;
    if (!record.owner) record.owner = owner.handle();
    objects_.keepRecord(record, *owner.data().groups);
  }

  DxfWalk& walk_;
  DxfObjects& objects_;
};

}  // namespace

void readDxfBlockNames(DxfWalk& walk, DxfObjects& objects) {
  while (walk.next()) {
    if (walk.record.name != "BLOCK") continue;
    const std::wstring name = blockName(objects.text(walk.record, 2));
    if (!name.empty() && !findBlock(name, objects)) makeBlock(name, objects);
  }
}

void readDxfBlocks(DxfWalk& walk, DxfObjects& objects) {
  EntityReader entities(walk, objects);
  AcDbBlockTableRecord* block = nullptr;
  while (walk.next()) {
    const DxfRecord& record = walk.record;
    if (record.name == "BLOCK") {
      block = findBlock(blockName(objects.text(record, 2)), objects);
      if (!block) {
        objects.complain(record, L"a block without a name is left out");
      } else {
        readBlockBegin(record, *block, objects);
      }
    } else if (record.name == "ENDBLK") {
      if (block) readBlockEnd(record, *block, objects);
      block = nullptr;
    } else if (block) {
      entities.read(*block);
    } else {
      objects.complain(record, L"an entity outside of a block is left out");
    }
  }
}

namespace {

/// The space in which an entity of the ENTITIES section lies.
AcDbBlockTableRecord& spaceOf(const DxfRecord& record, AcDbBlockTableRecord& model,
                              AcDbBlockTableRecord& paper, DxfObjects& objects) {
  const AcDbStub* const owner = objects.drawing().imp().find(record.owner);
  AcDbBlockTableRecord* const block = owner ? AcDbBlockTableRecord::cast(owner->object) : nullptr;
  if (block && block->isLayout()) return *block;
  return record.paperSpace ? paper : model;
}

}  // namespace

void readDxfEntities(DxfWalk& walk, DxfObjects& objects) {
  EntityReader entities(walk, objects);
  const AcDbDatabase& drawing = objects.drawing();
  auto& model = static_cast<AcDbBlockTableRecord&>(*drawing.modelSpaceId().stub()->object);
  auto& paper = static_cast<AcDbBlockTableRecord&>(*drawing.paperSpaceId().stub()->object);
  while (walk.next()) {
    if (isSubentity(walk.record.name)) {
      objects.complain(walk.record, L"it belongs to no entity and is left out");
    } else {
      entities.read(spaceOf(walk.record, model, paper, objects));
    }
  }
}

}  // namespace host
