#include <algorithm>
#include <span>
#include <string>
#include <utility>

#include "brx/db_proxy.h"
#include "host/database/stubs.h"
#include "host/filing/group_filers.h"
#include "host/filing/snapshot_filer.h"
#include "host/rx/registry.h"

/// Classes of modules come and go while drawings are open. When one goes, each object of it becomes a proxy
/// that keeps what the object would have filed; when one comes, the proxies of it become its objects.

namespace host {
namespace {

/// The stub gets another object, which takes over attached data where `extras` are moved.
void replace(AcDbStub& stub, AcDbObject* by) {
  HostAccess::stub(*stub.object) = nullptr;
  delete stub.object;
  stub.object = by;
  HostAccess::stub(*by) = &stub;
}

void moveExtras(AcDbObject& from, AcDbObject& to) {
  std::swap(HostAccess::extras(from), HostAccess::extras(to));
}

void describe(BrxProxyData& data, const AcRxClass& type) {
  const auto text = [](const ACHAR* each) { return std::wstring(each ? each : L""); };
  data.className = text(type.name());
  data.dxfName = text(type.dxfName());
  data.applicationName = text(type.appName());
  data.proxyFlags = type.proxyFlags();
}

void fill(BrxProxyData& data, const AcDbObject& object, AcDbDatabase& drawing) {
  describe(data, *object.isA());
  std::string bytes;
  SnapshotWriter writer(bytes);
  object.dwgOutFields(&writer);
  data.bytes.assign(bytes.begin(), bytes.end());
  GroupWriter groups(drawing, *data.groups);
  object.dxfOutFields(&groups);
}

void makeProxy(AcDbStub& stub, AcDbDatabase& drawing) {
  if (const AcDbEntity* const entity = AcDbEntity::cast(stub.object)) {
    auto* const proxy = new AcDbProxyEntity;
    fill(proxy->data(), *entity, drawing);
    proxy->setPropertiesFrom(entity);
    moveExtras(*stub.object, *proxy);
    replace(stub, proxy);
  } else {
    auto* const proxy = new AcDbProxyObject;
    fill(proxy->data(), *stub.object, drawing);
    moveExtras(*stub.object, *proxy);
    replace(stub, proxy);
  }
}

/// Undo steps hold fields of the object that was there before, which mean nothing to the new one.
void forgetUndo(AcDbDatabase& drawing) { drawing.imp().journal.clear(); }

void retiring(AcRxClass& descriptor) {
  for (AcDbDatabase* const drawing : allDrawings()) {
    bool any = false;
    for (AcDbStub& stub : drawing->imp().stubs) {
      if (!stub.object || !stub.object->isKindOf(&descriptor)) continue;
      makeProxy(stub, *drawing);
      any = true;
    }
    if (any) forgetUndo(*drawing);
  }
}

BrxProxyData* proxyData(AcDbObject* object) {
  if (auto* const entity = AcDbProxyEntity::cast(object)) return &entity->data();
  if (auto* const other = AcDbProxyObject::cast(object)) return &other->data();
  return nullptr;
}

/// Damaged files have entities where other objects belong, and the other way round; an object in the wrong
/// place would be taken for what it isn't.
bool canStandFor(const AcRxClass& type, const AcDbObject& proxy) {
  if (proxy.isKindOf(AcDbProxyEntity::desc())) return type.isDerivedFrom(AcDbEntity::desc());
  return type.isDerivedFrom(AcDbObject::desc()) && !type.isDerivedFrom(AcDbEntity::desc()) &&
         !type.isDerivedFrom(AcDbSymbolTable::desc()) && !type.isDerivedFrom(AcDbSymbolTableRecord::desc());
}

/// What came as a snapshot's bytes knows its class; what came as groups, the class's name in such files.
/// Only classes that came now: by those that were there before, the object could not be read.
AcRxClass* classOf(const AcDbObject& proxy, const BrxProxyData& data, std::span<AcRxClass* const> added) {
  AcRxClass* const type = data.bytes.empty() ? findClassByDxfName(data.dxfName) : findClass(data.className);
  const bool isNew = std::find(added.begin(), added.end(), type) != added.end();
  return isNew && canStandFor(*type, proxy) ? type : nullptr;
}

Acad::ErrorStatus readBack(AcDbObject& object, const AcDbObject& proxy, const BrxProxyData& data,
                           AcDbDatabase& drawing) {
  if (!data.bytes.empty()) {
    SnapshotReader reader({reinterpret_cast<const char*>(data.bytes.data()), data.bytes.size()}, drawing);
    return object.dwgInFields(&reader);
  }
  AcDbEntity* const entity = AcDbEntity::cast(&object);
  GroupReader reader(drawing, *data.groups);
  const Acad::ErrorStatus status = object.dxfInFields(&reader);
  if (entity && status == Acad::eOk) entity->setPropertiesFrom(AcDbEntity::cast(&proxy));
  return status;
}

/// An object that can't be read by its class stays a proxy.
bool revive(AcDbStub& stub, AcDbDatabase& drawing, std::span<AcRxClass* const> added) {
  const BrxProxyData* const data = proxyData(stub.object);
  AcRxClass* const type = data ? classOf(*stub.object, *data, added) : nullptr;
  auto* const made = type ? static_cast<AcDbObject*>(type->create()) : nullptr;
  if (!made) return false;
  if (readBack(*made, *stub.object, *data, drawing) != Acad::eOk) {
    delete made;
    return false;
  }
  // The proxy's attached data are the newer ones.
  moveExtras(*stub.object, *made);
  replace(stub, made);
  return true;
}

void linked(std::span<AcRxClass* const> added) {
  for (AcDbDatabase* const drawing : allDrawings()) {
    bool any = false;
    for (AcDbStub& stub : drawing->imp().stubs) any |= stub.object && revive(stub, *drawing, added);
    if (any) forgetUndo(*drawing);
  }
}

[[maybe_unused]] const bool observing = (setClassObserver({linked, retiring}), true);

}  // namespace
}  // namespace host
