#pragma once

#include <vector>

#include "brx/db_filers.h"
#include "brx/gi.h"

/// Database objects: identity, opening, erasing, ownership, attached data.

namespace AcDb {
enum OpenMode { kForRead = 0, kForWrite = 1, kForNotify = 2 };
enum Visibility { kInvisible = 1, kVisible = 0 };
enum Intersect { kOnBothOperands = 0, kExtendThis = 1, kExtendArg = 2, kExtendBoth = 3 };
enum OsnapMode {
  kOsModeEnd = 1,
  kOsModeMid = 2,
  kOsModeCen = 3,
  kOsModeNode = 4,
  kOsModeQuad = 5,
  kOsModeIns = 7,
  kOsModePerp = 8,
  kOsModeTan = 9,
  kOsModeNear = 10,
};
}  // namespace AcDb

class AcDbAuditInfo;
struct AcDbObjectExtras;

/// An object is made with `new`. Outside a database its maker deletes it and may change it freely;
/// once in a database it belongs to it, and is used between open and `close`.
class BRX_API AcDbObject : public AcGiDrawable {
 public:
  ACRX_DECLARE_MEMBERS(AcDbObject)
  ~AcDbObject() override;

  AcDbObjectId objectId() const { return AcDbObjectId(stub_); }
  AcDbHandle handle() const { return objectId().handle(); }
  AcDbDatabase* database() const { return objectId().database(); }
  AcDbObjectId ownerId() const;
  void setOwnerId(const AcDbObjectId& owner);
  bool isErased() const { return objectId().isErased(); }
  bool isReadEnabled() const;
  bool isWriteEnabled() const;
  /// Asked by members before they read or change; a resident object that isn't open so ends the
  /// program, since it is a fault of the caller. The first write of an open records undo.
  void assertReadEnabled() const {}
  void assertWriteEnabled(bool autoUndo = true, bool recordModified = true);

  Acad::ErrorStatus close();
  Acad::ErrorStatus erase(bool erasing = true);
  Acad::ErrorStatus upgradeOpen();
  Acad::ErrorStatus downgradeOpen();

  /// Data of `application`, or of all with null; the caller frees the list. Null when there is none.
  resbuf* xData(const ACHAR* application = nullptr) const;
  /// Replaces the data of the applications named by the list's 1001 items; the list is copied.
  /// `eRegappIdNotFound` for an unregistered name, `eXDataSizeExceeded` above 16,383 bytes.
  Acad::ErrorStatus setXData(const resbuf* data);
  AcDbObjectId extensionDictionary() const;
  /// `eOk` too where there is one; `eNotInDatabase`.
  Acad::ErrorStatus createExtensionDictionary();
  Acad::ErrorStatus releaseExtensionDictionary();
  /// Objects that depend on this one, such as groups; they are filed with it.
  const std::vector<AcDbObjectId>& reactorIds() const;
  void addPersistentReactor(AcDbObjectId dependent);
  void removePersistentReactor(AcDbObjectId dependent);

  /// A copy outside any database, the caller's.
  virtual AcRxObject* clone() const;
  virtual Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer);
  virtual Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const;
  virtual Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer);
  virtual Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const;
  virtual Acad::ErrorStatus audit(AcDbAuditInfo*) { return Acad::eOk; }

 protected:
  AcDbObject() = default;
  AcDbObject(const AcDbObject&) = delete;
  AcDbObject& operator=(const AcDbObject&) = delete;
  bool subWorldDraw(AcGiWorldDraw*) override { return true; }

 private:
  friend struct HostAccess;
  AcDbStub* stub_ = nullptr;
  AcDbObjectExtras* extras_ = nullptr;
};

Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased = false);
/// Opens as `T`; an object of another class gives `eNotThatKindOfClass` and isn't opened.
template <class T>
Acad::ErrorStatus acdbOpenObject(T*& object, AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead,
                                 bool openErased = false) {
  AcDbObject* any = nullptr;
  object = nullptr;
  const Acad::ErrorStatus status = acdbOpenAcDbObject(any, id, mode, openErased);
  if (status != Acad::eOk) return status;
  object = T::cast(any);
  if (object) return Acad::eOk;
  any->close();
  return Acad::eNotThatKindOfClass;
}

/// Opens in its constructor, closes in its destructor.
template <class T>
class AcDbObjectPointer {
 public:
  AcDbObjectPointer() = default;
  explicit AcDbObjectPointer(AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead, bool openErased = false) {
    open(id, mode, openErased);
  }
  AcDbObjectPointer(const AcDbObjectPointer&) = delete;
  AcDbObjectPointer& operator=(const AcDbObjectPointer&) = delete;
  ~AcDbObjectPointer() { close(); }
  Acad::ErrorStatus open(AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead, bool openErased = false) {
    close();
    return status_ = acdbOpenObject(object_, id, mode, openErased);
  }
  Acad::ErrorStatus openStatus() const { return status_; }
  Acad::ErrorStatus close() {
    if (!object_) return Acad::eNullObjectPointer;
    T* const closing = object_;
    object_ = nullptr;
    return closing->close();
  }
  T* object() const { return object_; }
  T* operator->() const { return object_; }
  operator T*() const { return object_; }

 private:
  T* object_ = nullptr;
  Acad::ErrorStatus status_ = Acad::eNullObjectPointer;
};
template <class T>
using AcDbSmartObjectPointer = AcDbObjectPointer<T>;
