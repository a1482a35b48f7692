#include "host/filing/dxf_writer.h"

#include <set>
#include <string>
#include <unordered_map>

#include "brx/db_block.h"
#include "brx/db_proxy.h"
#include "brx/solid_bodies.h"
#include "host/database/proxies.h"
#include "host/database/standard_drawing.h"
#include "host/filing/block_ends.h"
#include "host/filing/dxf_classes.h"
#include "host/filing/dxf_header.h"
#include "host/filing/dxf_out_filer.h"
#include "host/filing/object_walk.h"
#include "host/filing/table_names.h"
#include "platform/text/utf.h"

namespace host {
namespace {

/// What the class of an object tells of all its objects. Asked of each object it would cost more than some of
/// them do.
struct Kind {
  explicit Kind(const AcDbObject& object)
      : isProxyEntity(object.isKindOf(AcDbProxyEntity::desc())),
        isProxyObject(object.isKindOf(AcDbProxyObject::desc())),
        isBlockReference(object.isKindOf(AcDbBlockReference::desc())) {
    const ACHAR* const name = object.isA()->dxfName();
    if (name) dxfName = toUtf8(name);
    const auto* const entity = AcDbEntity::cast(&object);
    hasParts = entity && subentitiesOf(*entity);
  }
  /// Empty where objects of the class don't stand in files. Proxies have names of their own.
  std::string dxfName;
  bool isProxyEntity, isProxyObject, isBlockReference;
  bool hasParts;
};

class Kinds {
 public:
  const Kind& of(const AcDbObject& object) {
    const AcRxClass* const type = object.isA();
    if (type != last_) {
      kind_ = &kinds_.try_emplace(type, object).first->second;
      last_ = type;
    }
    return *kind_;
  }

 private:
  std::unordered_map<const AcRxClass*, Kind> kinds_;
  const AcRxClass* last_ = nullptr;
  const Kind* kind_ = nullptr;
};

std::string dxfNameOf(const AcDbObject& object, const Kind& kind) {
  if (kind.isProxyEntity) return toUtf8(static_cast<const AcDbProxyEntity&>(object).originalDxfName());
  if (kind.isProxyObject) return toUtf8(static_cast<const AcDbProxyObject&>(object).originalDxfName());
  return kind.dxfName;
}

void writeMeshFields(const BrxSolidBody& body, DxfSink& sink) {
  const auto point = [&](const AcGePoint3d& p) {
    sink.real(10, p.x), sink.real(20, p.y), sink.real(30, p.z);
  };
  sink.word(100, "AcDbSubDMesh");
  sink.integer(71, 2), sink.integer(72, 0), sink.integer(91, 0);
  sink.integer(92, static_cast<Adesk::Int64>(body.points.size()));
  for (const AcGePoint3d& each : body.points) point(each);
  sink.integer(93, static_cast<Adesk::Int64>(body.corners.size() + body.faceEnds.size()));
  Adesk::UInt32 begin = 0;
  for (const Adesk::UInt32 end : body.faceEnds) {
    sink.integer(90, end - begin);
    for (; begin < end; ++begin) sink.integer(90, body.corners[begin]);
  }
  sink.integer(94, 0), sink.integer(95, 0), sink.integer(90, 0);
}

/// Other programs refuse a file with a reference to a block that isn't in it.
bool namesNothing(const AcDbEntity& entity, const Kind& kind) {
  return kind.isBlockReference &&
         !isLiving(static_cast<const AcDbBlockReference&>(entity).blockTableRecord());
}

class DrawingWriter {
 public:
  DrawingWriter(AcDbDatabase& drawing, DxfSink& sink, DxfMeshes meshes)
      : drawing_(drawing), sink_(sink), filer_(drawing, sink), meshes_(meshes) {}

  void write() {
    prepare();
    writeDxfHeader(drawing_, sink_);
    writeDxfClasses(drawing_, sink_);
    section("TABLES", [&] { tables(); });
    section("BLOCKS", [&] { forEachBlock([&](AcDbBlockTableRecord& each) { block(each); }); });
    section("ENTITIES", [&] {
      for (const AcDbObjectId& space : {drawing_.modelSpaceId(), drawing_.paperSpaceId()}) {
        contents(static_cast<AcDbBlockTableRecord&>(*space.stub()->object));
      }
    });
    section("OBJECTS", [&] { forEachPlainObject(drawing_, [&](AcDbObject& each) { object(each, 5); }); });
    putGroups(drawing_.imp().kept.sections.head(), sink_);
    sink_.word(0, "EOF");
    drawing_.imp().nextHandle = ownNextHandle_;
  }

 private:
  template <class Contents>
  void section(std::string_view name, Contents write) {
    sink_.word(0, "SECTION"), sink_.word(2, name);
    write();
    sink_.word(0, "ENDSEC");
  }

  template <class Visit>
  void forEachBlock(Visit visit) {
    const AcDbStub& table = *drawing_.tableId(AcDbBlockTable::desc()).stub();
    forEachRecord<AcDbBlockTableRecord>(static_cast<AcDbSymbolTable&>(*table.object), visit);
  }

  /// Handles are given before the header tells the next free one.
  void prepare() {
    const AcDbDatabaseImp& imp = drawing_.imp();
    const bool knowsExtents = imp.extentsKnownAt == imp.changes;
    completeDrawing(drawing_);
    if (!knowsExtents) drawing_.updateExt();
    std::set<std::wstring> partHandles;
    const auto isTaken = [&](const std::wstring& handle) { return !partHandles.insert(handle).second; };
    forEachBlock([&](AcDbBlockTableRecord& each) {
      prepareBlockEnds(each);
      forEachEntity(each, [&](AcDbEntity& entity) {
        const Kind& kind = kinds_.of(entity);
        if (kind.isProxyEntity) renewParts(static_cast<AcDbProxyEntity&>(entity), isTaken);
        if (kind.hasParts && !subentitiesOf(entity)->ids.empty()) sequenceEnd(entity);
      });
    });
    ownNextHandle_ = nextMesh_ = drawing_.imp().nextHandle;
    if (meshes_ == DxfMeshes::besideSolids) {
      forEachBlock([&](AcDbBlockTableRecord& each) {
        forEachEntity(each, [&](AcDbEntity& entity) { drawing_.imp().nextHandle += meshCount(entity); });
      });
    }
  }

  static AcDbHandle meshCount(const AcDbEntity& entity) {
    const auto* const solid = dynamic_cast<const BrxSolidBodies*>(&entity);
    return solid ? static_cast<AcDbHandle>(solid->bodyCount()) : 0;
  }

  /// They have handles beyond the drawing's own, which aren't used up.
  void meshes(const AcDbEntity& entity) {
    const auto* const solid = dynamic_cast<const BrxSolidBodies*>(&entity);
    if (!solid) return;
    for (int i = 0; i < solid->bodyCount(); ++i) {
      sink_.word(0, "MESH");
      sink_.handle(5, nextMesh_++);
      sink_.handle(330, entity.ownerId().handle());
      filer_.begin(nullptr, false);
      entity.AcDbEntity::dxfOutFields(&filer_);
      filer_.end();
      writeMeshFields(solid->body(i), sink_);
    }
  }

  void head(const AcDbObject& object, std::string_view name, int handleCode) {
    sink_.word(0, name);
    sink_.handle(handleCode, object.handle());
    if (const AcDbObjectExtras* const extras = HostAccess::extras(object)) attachments(*extras);
    const AcDbObjectId owner = object.ownerId();
    sink_.handle(330, isLiving(owner) ? owner.handle() : 0);
  }

  void attachments(const AcDbObjectExtras& extras) {
    putBraces(extras.kept.head(), sink_);
    bool begun = false;
    for (const AcDbObjectId& each : extras.reactors) {
      if (!isLiving(each)) continue;
      if (!begun) sink_.word(102, "{ACAD_REACTORS");
      begun = true;
      sink_.handle(330, each.handle());
    }
    if (begun) sink_.word(102, "}");
    if (!isLiving(extras.extensionDictionary)) return;
    sink_.word(102, "{ACAD_XDICTIONARY");
    sink_.handle(360, extras.extensionDictionary.handle());
    sink_.word(102, "}");
  }

  void object(const AcDbObject& object, int handleCode, bool inPaperSpace = false) {
    const std::string name = dxfNameOf(object, kinds_.of(object));
    if (name.empty()) return;
    head(object, name, handleCode);
    const AcDbObjectExtras* const extras = HostAccess::extras(object);
    filer_.begin(extras ? extras->kept.head() : nullptr, inPaperSpace);
    object.dxfOutFields(&filer_);
    filer_.end();
    if (extras) putGroups(extras->xdata.head(), sink_);
  }

  void contents(AcDbBlockTableRecord& block) {
    const bool inPaperSpace = block.objectId() == drawing_.paperSpaceId();
    forEachEntity(block, [&](AcDbEntity& entity) {
      const Kind& kind = kinds_.of(entity);
      if (namesNothing(entity, kind)) return;
      object(entity, 5, inPaperSpace);
      if (meshes_ == DxfMeshes::besideSolids) meshes(entity);
      if (!kind.hasParts) return;
      forEachFiledSubentity(entity, [&](AcDbEntity& each) { object(each, 5, inPaperSpace); });
    });
  }

  void block(AcDbBlockTableRecord& block) {
    writeBlockBegin(block, sink_);
    const bool isElsewhere =
        block.objectId() == drawing_.modelSpaceId() || block.objectId() == drawing_.paperSpaceId();
    if (!isElsewhere) contents(block);
    writeBlockEnd(block, sink_);
  }

  void tables() {
    for (const TableName& each : tableNames()) {
      const AcDbObjectId id = drawing_.tableId(each.table());
      if (isLiving(id)) table(static_cast<AcDbSymbolTable&>(*id.stub()->object), each.name);
    }
    putGroups(drawing_.imp().kept.tables.head(), sink_);
  }

  void table(const AcDbSymbolTable& table, std::string_view name) {
    Adesk::Int64 count = 0;
    forEachRecord(table, [&](AcDbSymbolTableRecord&) { ++count; });
    sink_.word(0, "TABLE"), sink_.word(2, name);
    sink_.handle(5, table.handle());
    if (const AcDbObjectExtras* const extras = HostAccess::extras(table)) attachments(*extras);
    sink_.handle(330, 0);
    sink_.word(100, "AcDbSymbolTable");
    sink_.integer(70, count);
    const bool isDimensions = name == "DIMSTYLE";
    if (isDimensions) sink_.word(100, "AcDbDimStyleTable"), sink_.integer(71, 0);
    forEachRecord(table, [&](AcDbSymbolTableRecord& each) { object(each, isDimensions ? 105 : 5); });
    sink_.word(0, "ENDTAB");
  }

  AcDbDatabase& drawing_;
  DxfSink& sink_;
  DxfOutFiler filer_;
  DxfMeshes meshes_;
  Kinds kinds_;
  AcDbHandle ownNextHandle_ = 0, nextMesh_ = 0;
};

}  // namespace

bool writeDxf(AcDbDatabase& drawing, DxfSink& sink, DxfMeshes meshes) {
  DrawingWriter(drawing, sink, meshes).write();
  return sink.flush();
}

}  // namespace host
