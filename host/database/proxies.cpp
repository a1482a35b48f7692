#include "host/database/proxies.h"

#include <cwchar>
#include <iterator>

#include "host/database/fields.h"
#include "host/rx/registry.h"

ACRX_DEFINE_MEMBERS(AcDbProxyObject)
ACRX_DEFINE_MEMBERS(AcDbProxyEntity)

namespace {

std::unique_ptr<BrxProxyData> emptyData() {
  auto made = std::make_unique<BrxProxyData>();
  made->groups = std::make_unique<host::GroupList>();
  return made;
}

void writeData(AcDbDwgFiler& filer, const BrxProxyData& data) {
  host::DwgWriter writer{filer};
  writer(0, data.className), writer(0, data.dxfName), writer(0, data.applicationName);
  filer.writeInt32(data.proxyFlags);
  data.groups->dwgOut(filer);
  filer.writeInt32(static_cast<Adesk::Int32>(data.bytes.size()));
  filer.writeBytes(data.bytes.data(), static_cast<Adesk::UInt32>(data.bytes.size()));
  writer.list(330, data.references);
}

/// Bytes come in pieces, so that a wrong length costs no memory before the filer has refused it.
void readBytes(AcDbDwgFiler& filer, std::vector<unsigned char>& bytes) {
  constexpr Adesk::Int32 piece = 65536;
  Adesk::Int32 left = 0;
  filer.readInt32(&left);
  bytes.clear();
  while (left > 0 && filer.filerStatus() == Acad::eOk) {
    const Adesk::Int32 now = std::min(left, piece);
    const size_t old = bytes.size();
    bytes.resize(old + static_cast<size_t>(now));
    filer.readBytes(bytes.data() + old, static_cast<Adesk::UInt32>(now));
    left -= now;
  }
}

void readData(AcDbDwgFiler& filer, BrxProxyData& data) {
  host::DwgReader reader{filer};
  reader(0, data.className), reader(0, data.dxfName), reader(0, data.applicationName);
  Adesk::Int32 flags = 0;
  filer.readInt32(&flags);
  data.proxyFlags = flags;
  data.groups->dwgIn(filer);
  readBytes(filer, data.bytes);
  reader.list(330, data.references);
}

// Behind a code 0 among the groups of an entity stand the records of its parts.

/// They are owned by the entity, also those of a copy.
void writeGroups(AcDbDxfFiler& filer, const host::GroupList& groups, AcDbObjectId owner) {
  bool inHead = false, inBraces = false;
  for (const resbuf* each = groups.head(); each; each = each->rbnext) {
    if (each->restype == 0) inHead = true;
    if (each->restype == 100) inHead = false;
    if (each->restype == 102) inBraces = each->resval.rstring[0] == L'{';
    if (inHead && !inBraces && each->restype == 330) {
      filer.writeObjectId(330, owner);
    } else {
      filer.writeItem(*each);
    }
  }
}

}  // namespace

#define HOST_PROXY(Class, Base)                                                                 \
  Class::Class() : data_(emptyData()) {}                                                        \
  Class::~Class() = default;                                                                    \
  const ACHAR* Class::originalClassName() const { return data_->className.c_str(); }            \
  const ACHAR* Class::originalDxfName() const { return data_->dxfName.c_str(); }                \
  const ACHAR* Class::applicationDescription() const { return data_->applicationName.c_str(); } \
  int Class::proxyFlags() const { return data_->proxyFlags; }                                   \
  Acad::ErrorStatus Class::dwgOutFields(AcDbDwgFiler* filer) const {                            \
    Base::dwgOutFields(filer);                                                                  \
    writeData(*filer, *data_);                                                                  \
    return filer->filerStatus();                                                                \
  }                                                                                             \
  Acad::ErrorStatus Class::dwgInFields(AcDbDwgFiler* filer) {                                   \
    assertWriteEnabled();                                                                       \
    Base::dwgInFields(filer);                                                                   \
    readData(*filer, *data_);                                                                   \
    return filer->filerStatus();                                                                \
  }                                                                                             \
  Acad::ErrorStatus Class::dxfOutFields(AcDbDxfFiler* filer) const {                            \
    Base::dxfOutFields(filer);                                                                  \
    writeGroups(*filer, *data_->groups, objectId());                                            \
    return filer->filerStatus();                                                                \
  }                                                                                             \
  Acad::ErrorStatus Class::dxfInFields(AcDbDxfFiler* filer) {                                   \
    assertWriteEnabled();                                                                       \
    return Base::dxfInFields(filer);                                                            \
  }
HOST_PROXY(AcDbProxyObject, AcDbObject)
HOST_PROXY(AcDbProxyEntity, AcDbEntity)

namespace host {
namespace {

template <class Proxy>
std::unique_ptr<Proxy> proxyOf(const std::wstring& dxfName, GroupList groups) {
  registerDatabaseClasses();
  auto made = std::make_unique<Proxy>();
  made->data().dxfName = made->data().className = dxfName;
  *made->data().groups = std::move(groups);
  return made;
}

}  // namespace

void renewParts(AcDbProxyEntity& entity, const std::function<bool(const std::wstring&)>& isTaken) {
  GroupList& groups = *entity.data().groups;
  if (!groups.find(0)) return;
  GroupList renewed;
  bool inHead = false;
  for (const resbuf* each = groups.head(); each; each = each->rbnext) {
    if (each->restype == 0) inHead = true;
    if (each->restype == 100) inHead = false;
    if (!inHead || each->restype != 5 || !isTaken(each->resval.rstring)) {
      renewed.append(*each);
      continue;
    }
    wchar_t digits[24];
    const auto handle =
        static_cast<unsigned long long>(entity.database()->imp().make(*entity.database(), 0).handle);
    std::swprintf(digits, std::size(digits), L"%llX", handle);
    renewed.append(5, digits);
  }
  groups = std::move(renewed);
}

std::unique_ptr<AcDbProxyEntity> proxyEntity(const std::wstring& dxfName, GroupList groups) {
  return proxyOf<AcDbProxyEntity>(dxfName, std::move(groups));
}
std::unique_ptr<AcDbProxyObject> proxyObject(const std::wstring& dxfName, GroupList groups) {
  return proxyOf<AcDbProxyObject>(dxfName, std::move(groups));
}

}  // namespace host
