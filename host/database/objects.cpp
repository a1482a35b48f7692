#include <cstdio>
#include <cstdlib>

#include "brx/db_dictionary.h"
#include "host/database/changes.h"
#include "host/database/fields.h"
#include "host/database/group_codes.h"
#include "host/database/memory_filer.h"
#include "host/database/subentities.h"

namespace {

bool namesApplication(const resbuf* data, const std::wstring& key) {
  for (; data; data = data->rbnext) {
    if (data->restype == 1001 && host::symbolKey(data->resval.rstring) == key) return true;
  }
  return false;
}

/// Appends the runs of `data` whose application `wanted` accepts.
template <class Wanted>
void copyApplications(host::GroupList& to, const resbuf* data, Wanted wanted) {
  bool copying = false;
  for (; data; data = data->rbnext) {
    if (data->restype == 1001) copying = wanted(host::symbolKey(data->resval.rstring));
    if (copying) to.append(*data);
  }
}

AcDbObjectExtras& extrasOf(AcDbObject& object) {
  AcDbObjectExtras*& extras = HostAccess::extras(object);
  if (!extras) extras = new AcDbObjectExtras;
  return *extras;
}

/// Entities on a locked layer are read only.
bool isOnLockedLayer(const AcDbStub& stub) {
  const AcDbEntity* const entity = AcDbEntity::cast(stub.object);
  const AcDbStub* const layer = entity ? entity->layerId().stub() : nullptr;
  const AcDbLayerTableRecord* const record = layer ? AcDbLayerTableRecord::cast(layer->object) : nullptr;
  return record && record->isLocked();
}

}  // namespace

void host::markErased(AcDbStub& stub, bool erased) {
  AcDbDatabaseImp& imp = stub.database->imp();
  if (imp.openMarks) imp.journal.push_back({&stub, stub.erased, {}, 0, {}});
  stub.erased = erased;
  if (!erased) ++imp.revivals;
  ++imp.changes;
  imp.note(stub);
}

const AcDbObjectId AcDbObjectId::kNull;
bool AcDbObjectId::isValid() const { return stub_ && stub_->object; }
bool AcDbObjectId::isErased() const { return stub_ && stub_->erased; }
AcDbHandle AcDbObjectId::handle() const { return stub_ ? stub_->handle : 0; }
AcDbDatabase* AcDbObjectId::database() const { return stub_ ? stub_->database : nullptr; }

Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased) {
  object = nullptr;
  AcDbStub* const stub = id.stub();
  if (!stub) return Acad::eNullObjectId;
  if (mode == AcDb::kForRead) host::ReadLog::noteObject(stub);
  if (!stub->object) return Acad::ePermanentlyErased;
  if (stub->erased && !openErased) return Acad::eWasErased;
  if (stub->writing) return Acad::eWasOpenForWrite;
  if (mode == AcDb::kForWrite && stub->readers) return Acad::eWasOpenForRead;
  if (mode == AcDb::kForWrite && isOnLockedLayer(*stub)) return Acad::eOnLockedLayer;
  if (mode == AcDb::kForWrite) {
    stub->writing = true;
    ++stub->database->imp().changes;
  } else {
    ++stub->readers;
  }
  object = stub->object;
  return Acad::eOk;
}

ACRX_DEFINE_MEMBERS(AcDbObject)

AcDbObject::~AcDbObject() { delete extras_; }

AcDbObjectId AcDbObject::ownerId() const { return AcDbObjectId(stub_ ? stub_->owner : nullptr); }
void AcDbObject::setOwnerId(const AcDbObjectId& owner) {
  if (stub_) stub_->owner = owner.stub();
}
bool AcDbObject::isReadEnabled() const { return !stub_ || stub_->readers || stub_->writing; }
bool AcDbObject::isWriteEnabled() const { return !stub_ || stub_->writing; }

void AcDbObject::assertWriteEnabled(bool autoUndo, bool) {
  if (!stub_) return;
  AcDbDatabaseImp& imp = stub_->database->imp();
  ++imp.changes;
  imp.note(*stub_);
  if (imp.undoing) return;
  if (!stub_->writing) {
    std::fprintf(stderr, "The host ends: object %llx is changed but not open for write\n",
                 static_cast<unsigned long long>(stub_->handle));
    std::abort();
  }
  if (!autoUndo || !imp.openMarks || stub_->recordedAt == imp.markSerial) return;
  host::MemoryFiler filer(AcDb::kUndoFiler);
  dwgOutFields(&filer);
  imp.journal.push_back({stub_, stub_->erased, filer.take(), 0, {}});
  stub_->recordedAt = imp.markSerial;
}

Acad::ErrorStatus AcDbObject::close() {
  if (!stub_) return Acad::eNotInDatabase;
  // What a transaction opened it closes at its end.
  if (stub_->inTransaction && stub_->readers <= 1) return Acad::eOk;
  if (stub_->writing) {
    stub_->writing = false;
  } else if (stub_->readers) {
    --stub_->readers;
  } else {
    return Acad::eNotOpenForRead;
  }
  return Acad::eOk;
}

namespace {

/// What a drawing can't be without.
bool isIndispensable(const AcDbObject& object) {
  const AcDbDatabase& drawing = *object.database();
  const AcDbObjectId id = object.objectId();
  return object.isKindOf(AcDbSymbolTable::desc()) || id == drawing.layerZero() || id == drawing.clayer() ||
         id == drawing.modelSpaceId() || id == drawing.byLayerLinetype() || id == drawing.byBlockLinetype() ||
         id == drawing.continuousLinetype() || id == drawing.namedObjectsDictionaryId();
}

}  // namespace

Acad::ErrorStatus AcDbObject::erase(bool erasing) {
  if (!stub_) return Acad::eNotInDatabase;
  if (!stub_->writing) return Acad::eNotOpenForWrite;
  if (erasing == stub_->erased) return Acad::eOk;
  if (erasing && !isKindOf(AcDbEntity::desc()) && isIndispensable(*this)) {
    return Acad::eCannotBeErasedByCaller;
  }
  host::markErased(*stub_, erasing);
  AcDbEntity* const entity = AcDbEntity::cast(this);
  if (entity) host::eraseSubentities(*entity, erasing);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::upgradeOpen() {
  if (!stub_) return Acad::eNotInDatabase;
  if (stub_->writing) return Acad::eWasOpenForWrite;
  if (stub_->readers != 1) return stub_->readers ? Acad::eWasOpenForRead : Acad::eNotOpenForRead;
  if (isOnLockedLayer(*stub_)) return Acad::eOnLockedLayer;
  stub_->readers = 0;
  stub_->writing = true;
  ++stub_->database->imp().changes;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::downgradeOpen() {
  if (!stub_) return Acad::eNotInDatabase;
  if (!stub_->writing) return Acad::eNotOpenForWrite;
  stub_->writing = false;
  stub_->readers = 1;
  return Acad::eOk;
}

resbuf* AcDbObject::xData(const ACHAR* application) const {
  host::GroupList found;
  const std::wstring key = host::symbolKey(application);
  if (extras_) {
    copyApplications(found, extras_->xdata.head(),
                     [&](const std::wstring& own) { return !application || own == key; });
  }
  return found.release();
}

Acad::ErrorStatus AcDbObject::setXData(const resbuf* data) {
  if (!data || data->restype != 1001) return Acad::eInvalidResBuf;
  assertWriteEnabled();
  AcDbDatabase* const drawing = database() ? database() : acdbHostWorkingDatabase();
  if (!drawing) return Acad::eNoDatabase;
  AcDbObjectPointer<AcDbRegAppTable> applications(drawing->tableId(AcDbRegAppTable::desc()));
  if (applications.openStatus() != Acad::eOk) return applications.openStatus();
  for (const resbuf* each = data; each; each = each->rbnext) {
    if (each->restype < 1000 || each->restype > 1071) return Acad::eInvalidResBuf;
    if (each->restype == 1001 && !applications->has(each->resval.rstring)) return Acad::eRegappIdNotFound;
  }
  host::GroupList made;
  if (extras_) {
    copyApplications(made, extras_->xdata.head(),
                     [&](const std::wstring& own) { return !namesApplication(data, own); });
  }
  // An application with nothing behind its name loses its data.
  for (const resbuf* each = data; each; each = each->rbnext) {
    const bool isEmpty = each->restype == 1001 && (!each->rbnext || each->rbnext->restype == 1001);
    if (!isEmpty) made.append(*each);
  }
  if (host::xdataSize(made.head()) > host::mostXdata) return Acad::eXDataSizeExceeded;
  if (extras_ || !made.empty()) extrasOf(*this).xdata = std::move(made);
  return Acad::eOk;
}

AcDbObjectId AcDbObject::extensionDictionary() const {
  return extras_ ? extras_->extensionDictionary : AcDbObjectId{};
}
Acad::ErrorStatus AcDbObject::createExtensionDictionary() {
  if (!stub_) return Acad::eNotInDatabase;
  const AcDbObjectId old = extensionDictionary();
  if (old.isValid() && !old.isErased()) return Acad::eOk;
  assertWriteEnabled();
  auto* const made = new AcDbDictionary;
  made->setTreatElementsAsHard(true);
  AcDbObjectId id;
  const Acad::ErrorStatus status = database()->addAcDbObject(id, made, objectId());
  if (status != Acad::eOk) {
    delete made;
    return status;
  }
  extrasOf(*this).extensionDictionary = id;
  return made->close();
}
Acad::ErrorStatus AcDbObject::releaseExtensionDictionary() {
  AcDbObjectPointer<AcDbDictionary> dictionary(extensionDictionary(), AcDb::kForWrite);
  if (!dictionary.object()) return dictionary.openStatus();
  if (dictionary->numEntries()) return Acad::eContainerNotEmpty;
  assertWriteEnabled();
  dictionary->erase();
  extrasOf(*this).extensionDictionary.setNull();
  return Acad::eOk;
}

const std::vector<AcDbObjectId>& AcDbObject::reactorIds() const {
  static const std::vector<AcDbObjectId> none;
  return extras_ ? extras_->reactors : none;
}
void AcDbObject::addPersistentReactor(AcDbObjectId dependent) {
  assertWriteEnabled();
  std::vector<AcDbObjectId>& all = extrasOf(*this).reactors;
  if (std::find(all.begin(), all.end(), dependent) == all.end()) all.push_back(dependent);
}
void AcDbObject::removePersistentReactor(AcDbObjectId dependent) {
  assertWriteEnabled();
  if (extras_) std::erase(extras_->reactors, dependent);
}

AcRxObject* AcDbObject::clone() const {
  auto* const copy = static_cast<AcDbObject*>(isA()->create());
  if (!copy) return nullptr;
  host::MemoryFiler filer(AcDb::kCopyFiler);
  dwgOutFields(&filer);
  filer.rewind();
  copy->dwgInFields(&filer);
  return copy;
}

namespace {

/// What stands in the first byte of an object's fields.
enum : Adesk::UInt8 { hasXdata = 1, hasExtension = 2, hasReactors = 4, hasKept = 8 };

}  // namespace

Acad::ErrorStatus AcDbObject::dwgOutFields(AcDbDwgFiler* filer) const {
  // A copy stands alone: nothing depends on it, and it has no dictionary of its own.
  const bool copying = filer->filerType() == AcDb::kCopyFiler;
  Adesk::UInt8 has = 0;
  if (extras_ && !extras_->xdata.empty()) has |= hasXdata;
  if (extras_ && !copying && !extras_->extensionDictionary.isNull()) has |= hasExtension;
  if (extras_ && !copying && !extras_->reactors.empty()) has |= hasReactors;
  if (extras_ && !extras_->kept.empty()) has |= hasKept;
  filer->writeUInt8(has);
  host::DwgWriter writer{*filer};
  if (has & hasXdata) extras_->xdata.dwgOut(*filer);
  if (has & hasExtension) filer->writeHardOwnershipId(extras_->extensionDictionary);
  if (has & hasReactors) writer.list(330, extras_->reactors);
  if (has & hasKept) extras_->kept.dwgOut(*filer);
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbObject::dwgInFields(AcDbDwgFiler* filer) {
  Adesk::UInt8 has = 0;
  filer->readUInt8(&has);
  if (!has && !extras_) return filer->filerStatus();
  AcDbObjectExtras& extras = extrasOf(*this);
  extras = {};
  host::DwgReader reader{*filer};
  if (has & hasXdata) extras.xdata.dwgIn(*filer);
  if (has & hasExtension) {
    AcDbHardOwnershipId id;
    filer->readHardOwnershipId(&id);
    extras.extensionDictionary = id;
  }
  if (has & hasReactors) reader.list(330, extras.reactors);
  if (has & hasKept) extras.kept.dwgIn(*filer);
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbObject::dxfInFields(AcDbDxfFiler* filer) { return filer->filerStatus(); }
Acad::ErrorStatus AcDbObject::dxfOutFields(AcDbDxfFiler* filer) const { return filer->filerStatus(); }

namespace {

resbuf itemOf(int code) {
  resbuf item{};
  item.restype = static_cast<int16_t>(code);
  return item;
}

}  // namespace

Acad::ErrorStatus AcDbDxfFiler::writeString(int code, const ACHAR* text) {
  resbuf item = itemOf(code);
  item.resval.rstring = const_cast<ACHAR*>(text);
  return writeItem(item);
}
Acad::ErrorStatus AcDbDxfFiler::writeDouble(int code, double value) {
  resbuf item = itemOf(code);
  item.resval.rreal = value;
  return writeItem(item);
}
Acad::ErrorStatus AcDbDxfFiler::writeInt16(int code, Adesk::Int16 value) {
  resbuf item = itemOf(code);
  item.resval.rint = value;
  return writeItem(item);
}
Acad::ErrorStatus AcDbDxfFiler::writeInt32(int code, Adesk::Int32 value) {
  resbuf item = itemOf(code);
  item.resval.rlong = value;
  return writeItem(item);
}
Acad::ErrorStatus AcDbDxfFiler::writePoint3d(int code, const AcGePoint3d& value) {
  resbuf item = itemOf(code);
  item.resval.rpoint[0] = value.x, item.resval.rpoint[1] = value.y, item.resval.rpoint[2] = value.z;
  return writeItem(item);
}
Acad::ErrorStatus AcDbDxfFiler::writePoint2d(int code, const AcGePoint2d& value) {
  return writePoint3d(code, {value.x, value.y, 0});
}
Acad::ErrorStatus AcDbDxfFiler::writeVector3d(int code, const AcGeVector3d& value) {
  return writePoint3d(code, {value.x, value.y, value.z});
}
Acad::ErrorStatus AcDbDxfFiler::writeObjectId(int code, const AcDbObjectId& id) {
  resbuf item = itemOf(code);
  item.resval.rlname[0] = reinterpret_cast<int64_t>(id.stub());
  return writeItem(item);
}
