#pragma once

#include <memory>
#include <string>

#include "brx/db_curves.h"

/// Objects of classes that aren't here: what was read of them is kept, and is written as it came.

namespace host {
class GroupList;
}

/// What a proxy keeps. `groups` are those of a DXF file behind the ones that every object (entity)
/// has, with their subclass marks; `bytes` are those of the class's own `dwgOutFields`.
struct BrxProxyData {
  std::wstring className, dxfName, applicationName;
  int proxyFlags = 0;
  std::unique_ptr<host::GroupList> groups;
  std::vector<unsigned char> bytes;
  std::vector<AcDbObjectId> references;
};

class BRX_API AcDbProxyObject : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbProxyObject)
  AcDbProxyObject();
  ~AcDbProxyObject() override;
  const ACHAR* originalClassName() const;
  const ACHAR* originalDxfName() const;
  const ACHAR* applicationDescription() const;
  int proxyFlags() const;
  BrxProxyData& data() const { return *data_; }
  BRX_FILES_ITSELF

 private:
  std::unique_ptr<BrxProxyData> data_;
};

class BRX_API AcDbProxyEntity : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbProxyEntity)
  AcDbProxyEntity();
  ~AcDbProxyEntity() override;
  const ACHAR* originalClassName() const;
  const ACHAR* originalDxfName() const;
  const ACHAR* applicationDescription() const;
  int proxyFlags() const;
  BrxProxyData& data() const { return *data_; }
  BRX_FILES_ITSELF

 protected:
  /// By what is known of the groups; `eNotApplicable` where that doesn't do.
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;

 private:
  std::unique_ptr<BrxProxyData> data_;
};
