#pragma once

#include "brx/db_ids.h"
#include "brx/resbuf.h"

/// Where objects write their fields to and read them from.

namespace AcDb {
enum FilerType {
  kFileFiler = 0,
  kCopyFiler = 1,
  kUndoFiler = 2,
  kBagFiler = 3,
  kIdXlateFiler = 4,
  kPageFiler = 5,
  kDeepCloneFiler = 6,
  kWblockCloneFiler = 8,
  kPurgeFiler = 9,
};
}

/// Fields without names, in a fixed order. After a failure every read gives a zero value and the
/// status that came first.
class BRX_API AcDbDwgFiler {
 public:
  virtual ~AcDbDwgFiler() = default;
  virtual AcDb::FilerType filerType() const = 0;
  virtual Acad::ErrorStatus filerStatus() const = 0;
  virtual void setFilerStatus(Acad::ErrorStatus status) = 0;
  virtual void resetFilerStatus() { setFilerStatus(Acad::eOk); }

  virtual Acad::ErrorStatus writeBytes(const void* bytes, Adesk::UInt32 count) = 0;
  virtual Acad::ErrorStatus readBytes(void* bytes, Adesk::UInt32 count) = 0;
  virtual Acad::ErrorStatus writeString(const ACHAR* text) = 0;
  /// The text is the caller's to free by `acutDelString`.
  virtual Acad::ErrorStatus readString(ACHAR** text) = 0;
  virtual Acad::ErrorStatus writeHardPointerId(const AcDbHardPointerId& id) = 0;
  /// A handle that names nothing gives `eUnknownHandle` and a null id.
  virtual Acad::ErrorStatus readHardPointerId(AcDbHardPointerId* id) = 0;
  virtual Acad::ErrorStatus writeSoftPointerId(const AcDbSoftPointerId& id) = 0;
  virtual Acad::ErrorStatus readSoftPointerId(AcDbSoftPointerId* id) = 0;
  virtual Acad::ErrorStatus writeHardOwnershipId(const AcDbHardOwnershipId& id) = 0;
  virtual Acad::ErrorStatus readHardOwnershipId(AcDbHardOwnershipId* id) = 0;
  virtual Acad::ErrorStatus writeSoftOwnershipId(const AcDbSoftOwnershipId& id) = 0;
  virtual Acad::ErrorStatus readSoftOwnershipId(AcDbSoftOwnershipId* id) = 0;

  Acad::ErrorStatus writeBool(bool v) { return writeUInt8(v); }
  Acad::ErrorStatus writeUInt8(Adesk::UInt8 v) { return writeBytes(&v, sizeof v); }
  Acad::ErrorStatus writeInt16(Adesk::Int16 v) { return writeBytes(&v, sizeof v); }
  Acad::ErrorStatus writeInt32(Adesk::Int32 v) { return writeBytes(&v, sizeof v); }
  Acad::ErrorStatus writeInt64(Adesk::Int64 v) { return writeBytes(&v, sizeof v); }
  Acad::ErrorStatus writeDouble(double v) { return writeBytes(&v, sizeof v); }
  Acad::ErrorStatus writePoint3d(const AcGePoint3d& v) { return writeBytes(&v, 3 * sizeof(double)); }
  Acad::ErrorStatus writeVector3d(const AcGeVector3d& v) { return writeBytes(&v, 3 * sizeof(double)); }
  Acad::ErrorStatus readBool(bool* v) {
    Adesk::UInt8 byte = 0;
    const Acad::ErrorStatus status = readBytes(&byte, 1);
    *v = byte != 0;
    return status;
  }
  Acad::ErrorStatus readUInt8(Adesk::UInt8* v) { return readBytes(v, sizeof *v); }
  Acad::ErrorStatus readInt16(Adesk::Int16* v) { return readBytes(v, sizeof *v); }
  Acad::ErrorStatus readInt32(Adesk::Int32* v) { return readBytes(v, sizeof *v); }
  Acad::ErrorStatus readInt64(Adesk::Int64* v) { return readBytes(v, sizeof *v); }
  Acad::ErrorStatus readDouble(double* v) { return readBytes(v, sizeof *v); }
  Acad::ErrorStatus readPoint3d(AcGePoint3d* v) { return readBytes(v, 3 * sizeof(double)); }
  Acad::ErrorStatus readVector3d(AcGeVector3d* v) { return readBytes(v, 3 * sizeof(double)); }
};

/// Fields with group codes. Values of the codes 50 to 58 are radians on this interface; a filer of
/// text files turns them to degrees and back.
class BRX_API AcDbDxfFiler {
 public:
  virtual ~AcDbDxfFiler() = default;
  virtual AcDb::FilerType filerType() const { return AcDb::kFileFiler; }
  virtual Acad::ErrorStatus filerStatus() const = 0;
  virtual void setError(Acad::ErrorStatus status) = 0;
  /// Database in which names and handles are looked up.
  virtual AcDbDatabase* database() const = 0;

  /// Texts in `item` belong to the filer until the next call. `eEndOfObject` at the end of the
  /// subclass that `atSubclassData` found.
  virtual Acad::ErrorStatus readItem(resbuf* item) = 0;
  virtual Acad::ErrorStatus pushBackItem() = 0;
  /// Goes to the fields behind the subclass mark; false when it isn't there. An object without any
  /// marks (as old files and LISP write them) is one subclass, and the answer is true.
  virtual bool atSubclassData(const ACHAR* subclass) = 0;

  /// The value has the kind that its group code tells; names of objects stand in `rlname[0]` as stubs.
  virtual Acad::ErrorStatus writeItem(const resbuf& item) = 0;
  Acad::ErrorStatus writeString(int code, const ACHAR* text);
  Acad::ErrorStatus writeDouble(int code, double value);
  Acad::ErrorStatus writeInt16(int code, Adesk::Int16 value);
  Acad::ErrorStatus writeInt32(int code, Adesk::Int32 value);
  Acad::ErrorStatus writeBool(int code, bool value) { return writeInt16(code, value); }
  Acad::ErrorStatus writePoint3d(int code, const AcGePoint3d& value);
  virtual Acad::ErrorStatus writePoint2d(int code, const AcGePoint2d& value);
  Acad::ErrorStatus writeVector3d(int code, const AcGeVector3d& value);
  Acad::ErrorStatus writeObjectId(int code, const AcDbObjectId& id);
  Acad::ErrorStatus writeSubclass(const ACHAR* name) { return writeString(100, name); }
};
