#pragma once

#include "brx/acad_status.h"
#include "brx/arrays.h"

/// Names of database objects.

class AcDbDatabase;
struct AcDbStub;

using AcDbHandle = Adesk::UInt64;

/// Names an object of an open database; resolves in constant time. Valid until the database goes.
class BRX_API AcDbObjectId {
 public:
  AcDbObjectId() = default;
  explicit AcDbObjectId(AcDbStub* stub) : stub_(stub) {}
  static const AcDbObjectId kNull;
  bool isNull() const { return !stub_; }
  /// Names an object that has been in the database; it may be erased.
  bool isValid() const;
  bool isErased() const;
  AcDbHandle handle() const;
  AcDbDatabase* database() const;
  void setNull() { stub_ = nullptr; }
  AcDbStub* stub() const { return stub_; }
  bool operator==(const AcDbObjectId& o) const { return stub_ == o.stub_; }
  bool operator<(const AcDbObjectId& o) const { return stub_ < o.stub_; }

 protected:
  AcDbStub* stub_ = nullptr;
};

/// Ids by the kind of dependence that filing tells of.
#define BRX_ID_KIND(Name)                              \
  class Name : public AcDbObjectId {                   \
   public:                                             \
    Name() = default;                                  \
    Name(const AcDbObjectId& id) : AcDbObjectId(id) {} \
  };
BRX_ID_KIND(AcDbHardPointerId)
BRX_ID_KIND(AcDbSoftPointerId)
BRX_ID_KIND(AcDbHardOwnershipId)
BRX_ID_KIND(AcDbSoftOwnershipId)
#undef BRX_ID_KIND
