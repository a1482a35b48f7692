#include "host/filing/snapshot.h"

#include <algorithm>
#include <map>
#include <memory>

#include "brx/db_dictionary.h"
#include "brx/db_proxy.h"
#include "host/database/standard_drawing.h"
#include "host/database/stubs.h"
#include "host/database/subentities.h"
#include "host/filing/block_cycles.h"
#include "host/filing/handles.h"
#include "host/filing/object_walk.h"
#include "host/filing/snapshot_chunks.h"
#include "host/filing/snapshot_filer.h"
#include "host/filing/table_names.h"
#include "host/rx/registry.h"
#include "platform/files/whole_file.h"

namespace host {
namespace {

/// Objects are put into chunks of about this size.
constexpr size_t chunkSize = 1 << 20;

/// Raw fields of a class that isn't here, with the class's own names.
BrxProxyData* rawProxy(AcDbObject& object) {
  BrxProxyData* data = nullptr;
  if (auto* const entity = AcDbProxyEntity::cast(&object)) data = &entity->data();
  if (auto* const other = AcDbProxyObject::cast(&object)) data = &other->data();
  return data && !data->bytes.empty() ? data : nullptr;
}

// Writing

/// The classes of the objects, numbered as they come.
class ClassList {
 public:
  Adesk::Int32 indexOf(AcDbObject& object) {
    const BrxProxyData* const raw = rawProxy(object);
    const AcRxClass* const own = object.isA();
    const std::wstring name = raw ? raw->className : own->name();
    const auto [found, added] = indices_.try_emplace(name, static_cast<Adesk::Int32>(indices_.size()));
    if (!added) return found->second;
    SnapshotWriter writer(bytes_);
    const ACHAR* const dxfName = own->dxfName() ? own->dxfName() : L"";
    const ACHAR* const appName = own->appName() ? own->appName() : L"";
    writer.writeString(name.c_str());
    writer.writeString(raw ? raw->dxfName.c_str() : dxfName);
    writer.writeString(raw ? raw->applicationName.c_str() : appName);
    writer.writeInt32(raw ? raw->proxyFlags : own->proxyFlags());
    writer.writeBool(object.isKindOf(AcDbEntity::desc()));
    return found->second;
  }
  const std::string& bytes() const { return bytes_; }

 private:
  std::map<std::wstring, Adesk::Int32> indices_;
  std::string bytes_;
};

void writeObject(AcDbObject& object, ClassList& classes, std::string& bytes) {
  const AcDbStub& stub = *object.objectId().stub();
  SnapshotWriter writer(bytes);
  writer.writeInt32(classes.indexOf(object));
  writer.writeInt64(static_cast<Adesk::Int64>(stub.handle));
  writer.writeInt64(static_cast<Adesk::Int64>(stub.owner ? stub.owner->handle : 0));
  const size_t lengthAt = bytes.size();
  writer.writeInt32(0);
  if (const BrxProxyData* const raw = rawProxy(object)) {
    writer.writeBytes(raw->bytes.data(), static_cast<Adesk::UInt32>(raw->bytes.size()));
  } else {
    object.dwgOutFields(&writer);
  }
  const auto length = static_cast<Adesk::Int32>(bytes.size() - lengthAt - sizeof(Adesk::Int32));
  std::memcpy(bytes.data() + lengthAt, &length, sizeof length);
}

void writeValue(SnapshotWriter& writer, const HeaderValue& value) {
  writer.writeUInt8(static_cast<Adesk::UInt8>(value.index()));
  if (const auto* const whole = std::get_if<int>(&value)) writer.writeInt32(*whole);
  if (const auto* const real = std::get_if<double>(&value)) writer.writeDouble(*real);
  if (const auto* const text = std::get_if<std::wstring>(&value)) writer.writeString(text->c_str());
  if (const auto* const point = std::get_if<AcGePoint3d>(&value)) writer.writePoint3d(*point);
  if (const auto* const id = std::get_if<AcDbObjectId>(&value)) writer.writeSoftPointerId(*id);
}

std::string variablesOf(AcDbDatabase& drawing) {
  std::string bytes;
  SnapshotWriter writer(bytes);
  AcDbDatabaseImp& imp = drawing.imp();
  writer.writeInt64(static_cast<Adesk::Int64>(imp.nextHandle));
  writer.writeInt64(static_cast<Adesk::Int64>(imp.namedObjects.handle()));
  const auto rows = headerVariables();
  writer.writeInt32(static_cast<Adesk::Int32>(rows.size()));
  for (size_t i = 0; i < rows.size(); ++i) {
    writer.writeString(rows[i].name);
    writeValue(writer, imp.header(i));
  }
  writer.writeString(imp.kept.version.c_str());
  for (const GroupList* const each : imp.kept.lists()) each->dwgOut(writer);
  return bytes;
}

bool put(platform::WholeFile& file, std::string_view tag, std::string_view content) {
  std::string bytes;
  appendChunk(bytes, tag, content);
  return file.write(bytes);
}

}  // namespace

bool looksLikeSnapshot(std::string_view bytes) { return bytes.starts_with(snapshotMark); }

bool writeSnapshot(AcDbDatabase& drawing, platform::WholeFile& file) {
  std::string head;
  appendSnapshotHead(head);
  bool good = file.write(head);
  ClassList classes;
  std::string objects;
  forEachFiledObject(drawing, [&](AcDbObject& object) {
    writeObject(object, classes, objects);
    if (objects.size() < chunkSize) return;
    good = good && put(file, "OBJS", objects);
    objects.clear();
  });
  return good && put(file, "OBJS", objects) && put(file, "CLAS", classes.bytes()) &&
         put(file, "VARS", variablesOf(drawing)) && put(file, "ENDS", "");
}

namespace {

// Reading

struct ClassEntry {
  std::wstring name, dxfName, appName;
  Adesk::Int32 proxyFlags = 0;
  bool isEntity = false;
  AcRxClass* known = nullptr;
};

struct ObjectEntry {
  const ClassEntry* type = nullptr;
  AcDbHandle handle = 0, owner = 0;
  std::string_view fields;
  AcDbObjectId id;
};

class SnapshotLoader {
 public:
  SnapshotLoader(AcDbDatabase& drawing, FilingReport& report) : drawing_(drawing), report_(report) {}

  /// Takes the chunks apart; the drawing is not touched.
  bool parse(const std::vector<SnapshotChunk>& chunks) {
    for (const SnapshotChunk& each : chunks) {
      if (each.tag == "CLAS" && !parseClasses(each.content)) return false;
    }
    for (const SnapshotChunk& each : chunks) {
      if (each.tag == "OBJS" && !parseObjects(each.content)) return false;
      if (each.tag == "VARS") variables_ = each.content;
    }
    return variables_.size() >= 2 * sizeof(AcDbHandle) && handlesDiffer();
  }

  void fill() {
    SnapshotReader variables(variables_, drawing_);
    Adesk::Int64 seed = 0, root = 0;
    variables.readInt64(&seed), variables.readInt64(&root);
    AcDbHandle highest = 0;
    for (const ObjectEntry& each : objects_) highest = std::max(highest, each.handle);
    moveHandles(drawing_, highest + 1);
    for (ObjectEntry& each : objects_) create(each, static_cast<AcDbHandle>(root));
    for (ObjectEntry& each : objects_) readFields(each);
    for (ObjectEntry& each : objects_) link(each);
    readVariables(variables);
    completeDrawing(drawing_);
    breakBlockCycles(drawing_, report_);
    settleNextHandle(drawing_, static_cast<AcDbHandle>(seed));
    trustExtents(drawing_);
  }

 private:
  bool parseClasses(std::string_view bytes) {
    SnapshotReader reader(bytes, drawing_);
    while (!reader.rest().empty() && reader.filerStatus() == Acad::eOk) {
      ClassEntry& each = classes_.emplace_back();
      each.name = reader.takeText(), each.dxfName = reader.takeText(), each.appName = reader.takeText();
      reader.readInt32(&each.proxyFlags), reader.readBool(&each.isEntity);
      AcRxClass* const found = findClass(each.name);
      const bool suits =
          found && found->isDerivedFrom(each.isEntity ? AcDbEntity::desc() : AcDbObject::desc());
      each.known = suits ? found : nullptr;
    }
    return reader.filerStatus() == Acad::eOk;
  }

  bool parseObjects(std::string_view bytes) {
    SnapshotReader reader(bytes, drawing_);
    while (!reader.rest().empty()) {
      Adesk::Int32 type = 0, length = 0;
      Adesk::Int64 handle = 0, owner = 0;
      reader.readInt32(&type), reader.readInt64(&handle), reader.readInt64(&owner), reader.readInt32(&length);
      const std::string_view fields = reader.take(static_cast<Adesk::UInt32>(length));
      if (reader.filerStatus() != Acad::eOk || type < 0 || static_cast<size_t>(type) >= classes_.size() ||
          handle <= 0 || static_cast<AcDbHandle>(handle) >= handleLimit) {
        return false;
      }
      objects_.push_back({&classes_[static_cast<size_t>(type)],
                          static_cast<AcDbHandle>(handle),
                          static_cast<AcDbHandle>(owner),
                          fields,
                          {}});
    }
    return true;
  }

  bool handlesDiffer() const {
    std::vector<AcDbHandle> handles;
    handles.reserve(objects_.size());
    for (const ObjectEntry& each : objects_) handles.push_back(each.handle);
    std::sort(handles.begin(), handles.end());
    return std::adjacent_find(handles.begin(), handles.end()) == handles.end();
  }

  /// Tables are there already; they take the file's handles.
  void create(ObjectEntry& entry, AcDbHandle root) {
    const AcDbObjectId table = entry.type->known ? drawing_.tableId(entry.type->known) : AcDbObjectId();
    if (!table.isNull() && giveHandle(drawing_, table, entry.handle)) {
      entry.id = table;
      return;
    }
    auto* object = entry.type->known ? static_cast<AcDbObject*>(entry.type->known->create()) : nullptr;
    if (!object) object = newProxy(entry);
    entry.id = addWithHandle(drawing_, object, {}, entry.handle);
    if (entry.handle == root && object->isKindOf(AcDbDictionary::desc()))
      drawing_.imp().namedObjects = entry.id;
  }

  static AcDbObject* newProxy(const ObjectEntry& entry) {
    if (entry.type->isEntity) return new AcDbProxyEntity;
    return new AcDbProxyObject;
  }

  void readFields(ObjectEntry& entry) {
    AcDbStub& stub = *entry.id.stub();
    stub.owner = drawing_.imp().find(entry.owner);
    if (!entry.type->known) return fillProxy(entry);
    SnapshotReader reader(entry.fields, drawing_);
    stub.writing = true;
    const Acad::ErrorStatus status = stub.object->dwgInFields(&reader);
    stub.writing = false;
    if (status == Acad::eOk) return;
    if (status != Acad::eMakeMeProxy) {
      report_.add(0, entry.handle,
                  L"an object of " + entry.type->name + L" can't be read (status " + std::to_wstring(status) +
                      L"); it is kept as it came");
    }
    if (!drawing_.tableId(entry.type->known).isNull() ||
        entry.type->known->isDerivedFrom(AcDbSymbolTableRecord::desc())) {
      return;
    }
    HostAccess::stub(*stub.object) = nullptr;
    delete stub.object;
    stub.object = newProxy(entry);
    HostAccess::stub(*stub.object) = &stub;
    fillProxy(entry);
  }

  void fillProxy(const ObjectEntry& entry) {
    AcDbStub& stub = *entry.id.stub();
    SnapshotReader reader(entry.fields, drawing_);
    auto* const entity = AcDbProxyEntity::cast(stub.object);
    stub.writing = true;
    // Layer and colour stand first in the fields of every entity.
    if (entity) entity->AcDbEntity::dwgInFields(&reader);
    stub.writing = false;
    BrxProxyData& data = entity ? entity->data() : static_cast<AcDbProxyObject*>(stub.object)->data();
    data.className = entry.type->name, data.dxfName = entry.type->dxfName;
    data.applicationName = entry.type->appName, data.proxyFlags = entry.type->proxyFlags;
    data.bytes.assign(entry.fields.begin(), entry.fields.end());
  }

  /// Tables, blocks and entities hold their own in the order of the file.
  void link(const ObjectEntry& entry) {
    const AcDbStub& stub = *entry.id.stub();
    AcDbObject* const owner = stub.owner ? stub.owner->object : nullptr;
    if (AcDbSymbolTable* const table = AcDbSymbolTable::cast(owner)) {
      const auto* const record = AcDbSymbolTableRecord::cast(stub.object);
      if (record && isRecordOf(*table, *record)) {
        HostAccess::addRecord(*table, symbolKey(record->getName().c_str()), entry.id);
      }
    }
    AcDbEntity* const whole = AcDbEntity::cast(owner);
    if (whole && AcDbEntity::cast(stub.object)) linkSubentity(*whole, entry.id);
    AcDbBlockTableRecord* const block = AcDbBlockTableRecord::cast(owner);
    if (block && AcDbEntity::cast(stub.object)) HostAccess::addEntity(*block, entry.id);
  }

  static bool isRecordOf(const AcDbSymbolTable& table, const AcDbSymbolTableRecord& record) {
    for (const TableName& each : tableNames()) {
      if (each.table() == table.isA()) return record.isKindOf(each.record());
    }
    return false;
  }

  static void linkSubentity(const AcDbEntity& owner, AcDbObjectId id) {
    BrxSubentities* const list = subentitiesOf(owner);
    // What may own others is never owned so, or erasing would have no end.
    if (!list || subentitiesOf(*static_cast<AcDbEntity*>(id.stub()->object))) return;
    if (AcDbSequenceEnd::cast(id.stub()->object)) {
      list->end = id;
    } else {
      HostAccess::setPosition(id.stub(), list->ids.size());
      list->ids.push_back(id);
    }
  }

  void readVariables(SnapshotReader& reader) {
    Adesk::Int32 count = 0;
    reader.readInt32(&count);
    for (; count > 0 && reader.filerStatus() == Acad::eOk; --count) {
      const std::wstring name = reader.takeText();
      const HeaderValue value = readValue(reader);
      const auto row = findHeaderVariable(name);
      const bool suits = row && value.index() == headerVariables()[*row].initial.index();
      if (suits) drawing_.imp().setHeader(*row, value);
    }
    AcDbDatabaseImp& imp = drawing_.imp();
    imp.kept.version = reader.takeText();
    for (GroupList* const each : imp.kept.lists()) each->dwgIn(reader);
  }

  static HeaderValue readValue(SnapshotReader& reader) {
    Adesk::UInt8 kind = 0;
    reader.readUInt8(&kind);
    switch (kind) {
      case 0: {
        Adesk::Int32 value = 0;
        reader.readInt32(&value);
        return value;
      }
      case 1: {
        double value = 0;
        reader.readDouble(&value);
        return value;
      }
      case 2:
        return reader.takeText();
      case 3: {
        AcGePoint3d value;
        reader.readPoint3d(&value);
        return value;
      }
      default: {
        AcDbSoftPointerId id;
        reader.readSoftPointerId(&id);
        return AcDbObjectId(id);
      }
    }
  }

  AcDbDatabase& drawing_;
  FilingReport& report_;
  std::vector<ClassEntry> classes_;
  std::vector<ObjectEntry> objects_;
  std::string_view variables_;
};

}  // namespace

Acad::ErrorStatus readSnapshot(std::string_view bytes, AcDbDatabase& drawing, FilingReport& report) {
  std::vector<SnapshotChunk> chunks;
  uint32_t version = 0;
  std::wstring problem;
  if (!splitSnapshot(bytes, chunks, version, problem)) {
    report.add(0, 0, problem);
    return Acad::eFilerError;
  }
  if (version > snapshotVersion) {
    report.add(0, 0,
               L"the snapshot has format " + std::to_wstring(version) + L", this host knows format " +
                   std::to_wstring(snapshotVersion));
    return Acad::eInvalidDwgVersion;
  }
  SnapshotLoader loader(drawing, report);
  if (!loader.parse(chunks)) {
    report.add(0, 0, L"the snapshot's objects don't fit together");
    return Acad::eFilerError;
  }
  loader.fill();
  return Acad::eOk;
}

}  // namespace host
