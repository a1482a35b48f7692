#include "host/filing/dxf_objects.h"

#include "brx/db_dictionary.h"
#include "brx/db_polylines.h"
#include "brx/db_proxy.h"
#include "host/filing/handles.h"
#include "host/filing/object_walk.h"
#include "host/filing/old_marks.h"
#include "host/rx/registry.h"
#include "platform/text/hex.h"
#include "platform/text/utf.h"

namespace host {
namespace {

AcDbObjectId idOf(const resbuf& item) {
  return AcDbObjectId(reinterpret_cast<AcDbStub*>(item.resval.rlname[0]));
}

bool isText(std::string_view name) {
  return name == "TEXT" || name == "MTEXT" || name == "ATTRIB" || name == "ATTDEF";
}

/// Objects that keep groups as they are also keep the number of a point's coordinates.
bool keepsGroups(const AcDbObject& object) {
  return object.isKindOf(AcDbXrecord::desc()) || object.isKindOf(AcDbLayout::desc()) ||
         object.isKindOf(AcDbViewportTableRecord::desc()) || object.isKindOf(AcDbViewTableRecord::desc()) ||
         object.isKindOf(AcDbUCSTableRecord::desc()) || object.isKindOf(AcDbDimStyleTableRecord::desc());
}

constexpr int polyline3d = 8, polygonMesh = 16, polyfaceMesh = 64;

}  // namespace

void DxfObjects::complain(const DxfRecord& record, const std::wstring& what) {
  report_.add(record.place, record.handle, fromUtf8(record.name) + L": " + what);
}

std::wstring DxfObjects::text(const DxfRecord& record, int code) {
  const DxfGroup* const group = record.find(code);
  return group ? text(group->raw) : std::wstring();
}

AcRxClass* DxfObjects::classOf(const DxfRecord& record, const AcRxClass* base) {
  if (record.name == "POLYLINE") {
    const int64_t flags = record.integer(70);
    if (flags & (polygonMesh | polyfaceMesh)) return nullptr;
    return flags & polyline3d ? AcDb3dPolyline::desc() : AcDb2dPolyline::desc();
  }
  const auto [found, added] = classes_.try_emplace(std::string(record.name));
  if (added) found->second = findClassByDxfName(fromUtf8(record.name));
  return found->second && found->second->isDerivedFrom(base) ? found->second : nullptr;
}

template <class Table, class Record>
void DxfObjects::ensure(std::string_view name, const DxfRecord& asking, const wchar_t* what) {
  const AcDbObjectId tableId = drawing_.tableId(Table::desc());
  if (!names_[tableId.stub()].insert(std::string(name)).second) return;
  const std::wstring wide = text(name);
  AcDbObjectPointer<Table> table(tableId, AcDb::kForWrite);
  AcDbObjectId id;
  if (!table.object() || table->getAt(wide.c_str(), id) == Acad::eOk) return;
  complain(asking, std::wstring(what) + L" '" + wide + L"' is in no table: made");
  auto* const record = new Record;
  HostAccess::setName(*record, wide);
  id = addWithHandle(drawing_, record, tableId, 0);
  HostAccess::addRecord(*table.object(), symbolKey(wide.c_str()), id);
}

void DxfObjects::ensureLinetype(const DxfRecord& record) {
  if (const DxfGroup* const name = record.find(6)) {
    ensure<AcDbLinetypeTable, AcDbLinetypeTableRecord>(name->raw, record, L"linetype");
  }
}

/// Objects look their names up; a name that isn't there would cost the whole object.
void DxfObjects::ensureNames(const DxfRecord& record) {
  int marks = 0;
  for (const DxfGroup& each : record.body) {
    if (each.code == 100) ++marks;
    const bool common = marks <= 1;
    if (each.code == 8 && common) {
      ensure<AcDbLayerTable, AcDbLayerTableRecord>(each.raw, record, L"layer");
    } else if (each.code == 6 && common) {
      ensure<AcDbLinetypeTable, AcDbLinetypeTableRecord>(each.raw, record, L"linetype");
    } else if (each.code == 7 && isText(record.name)) {
      ensure<AcDbTextStyleTable, AcDbTextStyleTableRecord>(each.raw, record, L"text style");
    } else if (each.code == 2 && record.name == "INSERT") {
      ensure<AcDbBlockTable, AcDbBlockTableRecord>(each.raw, record, L"block");
    } else if (each.code == 3 && record.name == "LEADER") {
      ensure<AcDbDimStyleTable, AcDbDimStyleTableRecord>(each.raw, record, L"dimension style");
    }
  }
}

Acad::ErrorStatus DxfObjects::tryFields(AcDbObject& object, const DxfRecord& record) {
  filer_.begin(record);
  if (object.isKindOf(AcDbSymbolTableRecord::desc())) filer_.hideNames();
  if (keepsGroups(object)) filer_.keepPlanar();
  const Acad::ErrorStatus status = object.dxfInFields(&filer_);
  if (status != Acad::eOk) return status;
  GroupList unknown;
  known_.keepUnknown(object, record, filer_, unknown);
  for (const resbuf* each = unknown.head(); each; each = each->rbnext) extrasOf(object).kept.append(*each);
  return Acad::eOk;
}

bool DxfObjects::readFields(AcDbObject& object, const DxfRecord& record) {
  readHead(object, record);
  const Acad::ErrorStatus status = tryFields(object, record);
  readXdata(object, record);
  if (status == Acad::eOk) return true;
  complain(record, L"not all of its fields can be read (status " + std::to_wstring(status) + L")");
  return false;
}

std::unique_ptr<AcDbEntity> DxfObjects::makeEntity(const DxfRecord& record) {
  return makeEntity(record, classOf(record, AcDbEntity::desc()));
}

std::unique_ptr<AcDbEntity> DxfObjects::makeEntity(const DxfRecord& record, AcRxClass* type) {
  ensureNames(record);
  std::unique_ptr<AcDbEntity> made(type ? static_cast<AcDbEntity*>(type->create()) : nullptr);
  if (made) {
    readHead(*made, record);
    const Acad::ErrorStatus status = tryFields(*made, record);
    if (status != Acad::eOk) {
      complain(record, L"can't be read as what it is (status " + std::to_wstring(status) +
                           L"); it is kept as it came");
      made.reset();
    }
  }
  if (!made) made = makeProxyEntity(record);
  if (made->layerId().isNull()) made->setLayer(drawing_.layerZero());
  if (made->linetypeId().isNull()) made->setLinetype(drawing_.byLayerLinetype());
  readXdata(*made, record);
  return made;
}

std::unique_ptr<AcDbEntity> DxfObjects::makeProxyEntity(const DxfRecord& given) {
  const DxfRecord record = withMarks(given);
  auto made = std::make_unique<AcDbProxyEntity>();
  readHead(*made, record);
  filer_.begin(record);
  made->AcDbEntity::dxfInFields(&filer_);
  made->data().dxfName = fromUtf8(record.name);
  std::vector<DxfGroup> own;
  bool common = true;
  for (const DxfGroup& each : record.body) {
    if (each.code == 100) common = each.raw == "AcDbEntity";
    if (!common) own.push_back(each);
  }
  keepGroups(own, *made->data().groups);
  known_.keepUnknown(*made, record, filer_, extrasOf(*made).kept);
  return made;
}

std::unique_ptr<AcDbObject> DxfObjects::makeObject(const DxfRecord& record) {
  AcRxClass* const type = classOf(record, AcDbObject::desc());
  const bool isPlain = type && !type->isDerivedFrom(AcDbEntity::desc()) &&
                       !type->isDerivedFrom(AcDbSymbolTable::desc()) &&
                       !type->isDerivedFrom(AcDbSymbolTableRecord::desc());
  std::unique_ptr<AcDbObject> made(isPlain ? static_cast<AcDbObject*>(type->create()) : nullptr);
  if (made && !readFields(*made, record)) made.reset();
  if (made) return made;
  auto proxy = std::make_unique<AcDbProxyObject>();
  proxy->data().dxfName = fromUtf8(record.name);
  keepGroups(record.body, *proxy->data().groups);
  readHead(*proxy, record);
  readXdata(*proxy, record);
  return proxy;
}

AcDbObjectId DxfObjects::add(AcDbObject* object, AcDbObjectId owner, const DxfRecord& record) {
  const AcDbObjectId id = addWithHandle(drawing_, object, owner, record.handle);
  if (record.handle && id.handle() != record.handle) {
    report_.add(record.place, record.handle,
                fromUtf8(record.name) + L": another object has this handle; it gets a new one");
  }
  return id;
}

void DxfObjects::keepGroups(const std::vector<DxfGroup>& groups, GroupList& kept) {
  resbuf item{};
  for (size_t i = 0; i < groups.size();) {
    i += filer_.takeItem(groups, i, true, item);
    kept.append(item);
  }
}

void DxfObjects::keepRecord(const DxfRecord& record, GroupList& kept) {
  kept.append(0, fromUtf8(record.name).c_str());
  filer_.tellOf(record.handle);
  resbuf item{};
  if (record.handle) {
    kept.append(5, hexText(record.handle).c_str());
    // No other object may get it.
    AcDbObjectId reserved;
    if (record.handle < handleLimit) drawing_.getAcDbObjectId(reserved, true, record.handle);
  }
  keepGroups(record.head, kept);
  if (record.owner && record.owner < handleLimit) {
    AcDbObjectId owner;
    drawing_.getAcDbObjectId(owner, true, record.owner);
    item.restype = 330;
    item.resval.rlname[0] = reinterpret_cast<int64_t>(owner.stub());
    kept.append(item);
  }
  keepGroups(record.body, kept);
  keepGroups(record.xdata, kept);
}

/// Reactors and the extension dictionary; other groups in braces are kept.
void DxfObjects::readHead(AcDbObject& object, const DxfRecord& record) {
  filer_.tellOf(record.handle);
  enum { reactors, dictionary, others } inside = others;
  resbuf item{};
  for (size_t i = 0; i < record.head.size();) {
    const DxfGroup& group = record.head[i];
    i += filer_.takeItem(record.head, i, true, item);
    if (group.is(102, "{ACAD_REACTORS")) {
      inside = reactors;
    } else if (group.is(102, "{ACAD_XDICTIONARY")) {
      inside = dictionary;
    } else if (inside == others) {
      extrasOf(object).kept.append(item);
    } else if (group.code == 102) {
      inside = others;
    } else if (inside == reactors && group.code == 330) {
      if (!idOf(item).isNull()) extrasOf(object).reactors.push_back(idOf(item));
    } else if (inside == dictionary && group.code == 360) {
      extrasOf(object).extensionDictionary = idOf(item);
    }
  }
}

void DxfObjects::readXdata(AcDbObject& object, const DxfRecord& record) {
  resbuf item{};
  for (size_t i = 0; i < record.xdata.size();) {
    const DxfGroup& group = record.xdata[i];
    if (group.code == 1001) {
      ensure<AcDbRegAppTable, AcDbRegAppTableRecord>(group.raw, record, L"application");
    }
    i += filer_.takeItem(record.xdata, i, false, item);
    extrasOf(object).xdata.append(item);
  }
}

}  // namespace host
