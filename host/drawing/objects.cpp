#include <cstdio>
#include <cstdlib>

#include "brx/lisp_calls.h"
#include "host/drawing/fields.h"
#include "host/drawing/memory_filer.h"

namespace {

/// Extended data of one object above this is refused, as the file format has 16 bits for it.
constexpr size_t mostXdata = 16383;

bool isXdataText(int code) { return (code >= 1000 && code <= 1003) || code == 1005; }

void append(resbuf**& end, const resbuf& item) {
  *end = acutNewRb(item.restype);
  if (isXdataText(item.restype)) {
    acutNewString(item.resval.rstring, (*end)->resval.rstring);
  } else {
    (*end)->resval = item.resval;
  }
  end = &(*end)->rbnext;
}

size_t xdataSize(const resbuf* data) {
  size_t size = 0;
  for (; data; data = data->rbnext) {
    const bool isText = isXdataText(data->restype);
    const bool isPoint = data->restype >= 1010 && data->restype <= 1013;
    size += isText ? 4 + std::wcslen(data->resval.rstring) : isPoint ? 25 : 9;
  }
  return size;
}

bool namesApplication(const resbuf* data, const std::wstring& key) {
  for (; data; data = data->rbnext) {
    if (data->restype == 1001 && host::symbolKey(data->resval.rstring) == key) return true;
  }
  return false;
}

/// Appends the runs of `data` whose application `wanted` accepts.
template <class Wanted>
void copyApplications(resbuf**& end, const resbuf* data, Wanted wanted) {
  bool copying = false;
  for (; data; data = data->rbnext) {
    if (data->restype == 1001) copying = wanted(host::symbolKey(data->resval.rstring));
    if (copying) append(end, *data);
  }
}

}  // namespace

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
  if (!stub->object) return Acad::ePermanentlyErased;
  if (stub->erased && !openErased) return Acad::eWasErased;
  if (stub->writing) return Acad::eWasOpenForWrite;
  if (mode == AcDb::kForWrite && stub->readers) return Acad::eWasOpenForRead;
  if (mode == AcDb::kForWrite) {
    stub->writing = true;
    stub->recorded = false;
  } else {
    ++stub->readers;
  }
  object = stub->object;
  return Acad::eOk;
}

ACRX_DEFINE_MEMBERS(AcDbObject)

AcDbObject::~AcDbObject() {
  if (!extras_) return;
  acutRelRb(extras_->xdata);
  delete extras_;
}

AcDbObjectId AcDbObject::ownerId() const { return AcDbObjectId(stub_ ? stub_->owner : nullptr); }
void AcDbObject::setOwnerId(const AcDbObjectId& owner) {
  if (stub_) stub_->owner = owner.stub();
}
bool AcDbObject::isReadEnabled() const { return !stub_ || stub_->readers || stub_->writing; }
bool AcDbObject::isWriteEnabled() const { return !stub_ || stub_->writing; }

void AcDbObject::assertWriteEnabled(bool autoUndo, bool) {
  if (!stub_) return;
  AcDbDatabaseImp& imp = stub_->database->imp();
  if (imp.undoing) return;
  if (!stub_->writing) {
    std::fprintf(stderr, "The host ends: object %llx is changed but not open for write\n",
                 static_cast<unsigned long long>(stub_->handle));
    std::abort();
  }
  if (!autoUndo || stub_->recorded || !imp.openMarks) return;
  host::MemoryFiler filer(AcDb::kUndoFiler);
  dwgOutFields(&filer);
  imp.journal.push_back({stub_, stub_->erased, filer.take()});
  stub_->recorded = true;
}

Acad::ErrorStatus AcDbObject::close() {
  if (!stub_) return Acad::eNotInDatabase;
  if (stub_->writing) {
    stub_->writing = false;
  } else if (stub_->readers) {
    --stub_->readers;
  } else {
    return Acad::eNotOpenForRead;
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::erase(bool erasing) {
  if (!stub_) return Acad::eNotInDatabase;
  if (!stub_->writing) return Acad::eNotOpenForWrite;
  AcDbDatabaseImp& imp = stub_->database->imp();
  if (imp.openMarks) imp.journal.push_back({stub_, stub_->erased, {}});
  stub_->erased = erasing;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::upgradeOpen() {
  if (!stub_) return Acad::eNotInDatabase;
  if (stub_->writing) return Acad::eWasOpenForWrite;
  if (stub_->readers != 1) return stub_->readers ? Acad::eWasOpenForRead : Acad::eNotOpenForRead;
  stub_->readers = 0;
  stub_->writing = true;
  stub_->recorded = false;
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
  resbuf* head = nullptr;
  resbuf** end = &head;
  const std::wstring key = host::symbolKey(application);
  if (extras_) {
    copyApplications(end, extras_->xdata,
                     [&](const std::wstring& own) { return !application || own == key; });
  }
  return head;
}

Acad::ErrorStatus AcDbObject::setXData(const resbuf* data) {
  if (!data || data->restype != 1001) return Acad::eInvalidResBuf;
  assertWriteEnabled();
  AcDbDatabase* const drawing = database() ? database() : acdbHostWorkingDatabase();
  if (!drawing) return Acad::eNoDatabase;
  AcDbObjectPointer<AcDbRegAppTable> applications(drawing->tableId(AcDbRegAppTable::desc()));
  if (applications.openStatus() != Acad::eOk) return applications.openStatus();
  for (const resbuf* each = data; each; each = each->rbnext) {
    if (each->restype < 1000 || each->restype > 1071 || each->restype == 1004) return Acad::eInvalidResBuf;
    if (each->restype == 1001 && !applications->has(each->resval.rstring)) return Acad::eRegappIdNotFound;
  }
  resbuf* made = nullptr;
  resbuf** end = &made;
  if (extras_) {
    copyApplications(end, extras_->xdata,
                     [&](const std::wstring& own) { return !namesApplication(data, own); });
  }
  // An application with nothing behind its name loses its data.
  for (const resbuf* each = data; each; each = each->rbnext) {
    const bool isEmpty = each->restype == 1001 && (!each->rbnext || each->rbnext->restype == 1001);
    if (!isEmpty) append(end, *each);
  }
  if (xdataSize(made) > mostXdata) {
    acutRelRb(made);
    return Acad::eXDataSizeExceeded;
  }
  if (!extras_) extras_ = new AcDbObjectExtras;
  acutRelRb(extras_->xdata);
  extras_->xdata = made;
  return Acad::eOk;
}

AcDbObjectId AcDbObject::extensionDictionary() const {
  return extras_ ? extras_->extensionDictionary : AcDbObjectId{};
}
Acad::ErrorStatus AcDbObject::createExtensionDictionary() { return Acad::eNotImplementedYet; }

AcRxObject* AcDbObject::clone() const {
  auto* const copy = static_cast<AcDbObject*>(isA()->create());
  if (!copy) return nullptr;
  host::MemoryFiler filer(AcDb::kCopyFiler);
  dwgOutFields(&filer);
  filer.rewind();
  copy->dwgInFields(&filer);
  return copy;
}

Acad::ErrorStatus AcDbObject::dwgOutFields(AcDbDwgFiler* filer) const {
  Adesk::Int32 count = 0;
  const resbuf* const data = extras_ ? extras_->xdata : nullptr;
  for (const resbuf* each = data; each; each = each->rbnext) ++count;
  filer->writeInt32(count);
  for (const resbuf* each = data; each; each = each->rbnext) {
    filer->writeInt16(each->restype);
    if (isXdataText(each->restype)) {
      filer->writeString(each->resval.rstring);
    } else {
      filer->writeBytes(each->resval.rpoint, sizeof(ads_point));
    }
  }
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbObject::dwgInFields(AcDbDwgFiler* filer) {
  Adesk::Int32 count = 0;
  filer->readInt32(&count);
  resbuf* head = nullptr;
  for (resbuf** end = &head; count > 0 && filer->filerStatus() == Acad::eOk; --count, end = &(*end)->rbnext) {
    Adesk::Int16 code = 0;
    filer->readInt16(&code);
    *end = acutNewRb(code);
    if (isXdataText(code)) {
      filer->readString(&(*end)->resval.rstring);
    } else {
      filer->readBytes((*end)->resval.rpoint, sizeof(ads_point));
    }
  }
  if (!extras_ && head) extras_ = new AcDbObjectExtras;
  if (extras_) {
    acutRelRb(extras_->xdata);
    extras_->xdata = head;
  }
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
