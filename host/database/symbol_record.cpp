#include "host/database/record_fields.h"

ACRX_DEFINE_MEMBERS(AcDbSymbolTableRecord)
ACRX_DEFINE_MEMBERS(AcDbRegAppTableRecord)
ACRX_DEFINE_MEMBERS(AcDbDimStyleTableRecord)
ACRX_DEFINE_MEMBERS(AcDbViewTableRecord)
ACRX_DEFINE_MEMBERS(AcDbUCSTableRecord)
ACRX_DEFINE_MEMBERS(AcDbViewportTableRecord)

namespace {

constexpr size_t longestName = 255;

bool isName(std::wstring_view name) {
  // A leading star marks the host's own names.
  if (name.starts_with(L'*')) name.remove_prefix(1);
  const bool forbidden = name.find_first_of(L"<>/\\\":;?,*=`|") != std::wstring_view::npos;
  const bool control = std::any_of(name.begin(), name.end(), [](wchar_t c) { return c < L' '; });
  return !name.empty() && name.size() <= longestName && !forbidden && !control;
}

}  // namespace

Acad::ErrorStatus AcDbSymbolTableRecord::setName(const ACHAR* name) {
  const bool starred = AcDbBlockTableRecord::cast(this) || AcDbViewportTableRecord::cast(this);
  if (!name || !isName(name) || (*name == L'*' && !starred)) return Acad::eInvalidInput;
  const AcDbDatabase* const drawing = database();
  if (drawing && (objectId() == drawing->layerZero() || objectId() == drawing->continuousLinetype())) {
    if (host::symbolKey(name) != host::symbolKey(name_.c_str())) return Acad::eInvalidInput;
  }
  assertWriteEnabled();
  AcDbSymbolTable* const table = AcDbSymbolTable::cast(host::objectOf(ownerId()));
  if (table) {
    AcDbObjectId other;
    if (table->getAt(name, other) == Acad::eOk && !(other == objectId())) return Acad::eDuplicateKey;
    HostAccess::rename(*table, host::symbolKey(name_.c_str()), host::symbolKey(name), objectId());
  }
  name_ = name;
  return Acad::eOk;
}

namespace host {
std::wstring nameOfRecord(AcDbObjectId id) {
  const AcDbSymbolTableRecord* const record = AcDbSymbolTableRecord::cast(objectOf(id));
  return record ? record->getName() : std::wstring();
}
}  // namespace host

Acad::ErrorStatus AcDbSymbolTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
  AcDbObject::dwgOutFields(filer);
  filer->writeString(name_.c_str());
  return filer->writeInt16(flags_);
}
Acad::ErrorStatus AcDbSymbolTableRecord::dwgInFields(AcDbDwgFiler* filer) {
  AcDbObject::dwgInFields(filer);
  host::DwgReader{*filer}(2, name_);
  return filer->readInt16(&flags_);
}
Acad::ErrorStatus AcDbSymbolTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
  filer->writeSubclass(L"AcDbSymbolTableRecord");
  return filer->filerStatus();
}
Acad::ErrorStatus AcDbSymbolTableRecord::dxfInFields(AcDbDxfFiler* filer) { return filer->filerStatus(); }

template <class Visitor, class Self>
void AcDbRegAppTableRecord::fields(Visitor& v, Self& o) {
  head(v, o);
}
HOST_FILING(AcDbRegAppTableRecord, AcDbSymbolTableRecord, fields)

BrxGroupsTableRecord::BrxGroupsTableRecord() : groups_(std::make_unique<host::GroupList>()) {}
BrxGroupsTableRecord::~BrxGroupsTableRecord() = default;
void BrxGroupsTableRecord::setGroups(host::GroupList groups) {
  assertWriteEnabled();
  *groups_ = std::move(groups);
}
template <class Visitor, class Self>
void BrxGroupsTableRecord::fields(Visitor& v, Self& o) {
  head(v, o), v.groups(*o.groups_);
}
/// The name of the subclass is that of the record's class.
HOST_FILING_AS(BrxGroupsTableRecord, AcDbSymbolTableRecord, fields, isA()->name())
