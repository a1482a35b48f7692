#include "brx/db_dictionary.h"

#include "host/database/fields.h"

ACRX_DEFINE_MEMBERS(AcDbDictionary)
ACRX_DEFINE_MEMBERS(AcDbDictionaryWithDefault)
ACRX_DEFINE_MEMBERS(AcDbPlaceHolder)

static constexpr auto noFields = [](auto&, auto&) {};
HOST_FILING(AcDbPlaceHolder, AcDbObject, noFields)

Acad::ErrorStatus AcDbDictionary::getAt(const ACHAR* name, AcDbObjectId& id) const {
  const auto found = entries_.find(host::symbolKey(name));
  if (found == entries_.end() || found->second.id.isErased()) {
    const auto* const withDefault = AcDbDictionaryWithDefault::cast(this);
    if (!withDefault || withDefault->defaultId().isNull()) return Acad::eKeyNotFound;
    return id = withDefault->defaultId(), Acad::eOk;
  }
  id = found->second.id;
  return Acad::eOk;
}
bool AcDbDictionary::has(const ACHAR* name) const {
  const auto found = entries_.find(host::symbolKey(name));
  return found != entries_.end() && !found->second.id.isErased();
}
Acad::ErrorStatus AcDbDictionary::nameAt(AcDbObjectId id, std::wstring& name) const {
  for (const auto& [key, entry] : entries_) {
    if (entry.id == id) return name = entry.name, Acad::eOk;
  }
  return Acad::eKeyNotFound;
}

Acad::ErrorStatus AcDbDictionary::setAt(const ACHAR* name, AcDbObject* object, AcDbObjectId& id) {
  if (!object) return Acad::eNullObjectPointer;
  if (!name || !*name) return Acad::eInvalidKey;
  if (!database()) return Acad::eNoDatabase;
  if (object->database() && object->database() != database()) return Acad::eWrongDatabase;
  assertWriteEnabled();
  if (!object->database()) {
    const Acad::ErrorStatus status = database()->addAcDbObject(id, object, objectId());
    if (status != Acad::eOk) return status;
  }
  id = object->objectId();
  Entry& entry = entries_[host::symbolKey(name)];
  if (!(entry.id == id) && entry.id.isValid() && !entry.id.isErased())
    host::markErased(*entry.id.stub(), true);
  entry = {name, id};
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::remove(const ACHAR* name) {
  const auto found = entries_.find(host::symbolKey(name));
  if (found == entries_.end()) return Acad::eKeyNotFound;
  assertWriteEnabled();
  AcDbStub* const stub = found->second.id.stub();
  if (stub && stub->object && !stub->erased && stub->owner == objectId().stub())
    host::markErased(*stub, true);
  entries_.erase(found);
  return Acad::eOk;
}
Acad::ErrorStatus AcDbDictionary::remove(AcDbObjectId id) {
  std::wstring name;
  const Acad::ErrorStatus status = nameAt(id, name);
  return status == Acad::eOk ? remove(name.c_str()) : status;
}
Acad::ErrorStatus AcDbDictionary::setName(const ACHAR* oldName, const ACHAR* newName) {
  if (!newName || !*newName) return Acad::eInvalidKey;
  const std::wstring from = host::symbolKey(oldName), to = host::symbolKey(newName);
  const auto found = entries_.find(from);
  if (found == entries_.end() || found->second.id.isErased()) return Acad::eKeyNotFound;
  if (from != to && has(newName)) return Acad::eDuplicateKey;
  assertWriteEnabled();
  const AcDbObjectId id = found->second.id;
  entries_.erase(found);
  entries_[to] = {newName, id};
  return Acad::eOk;
}
Adesk::UInt32 AcDbDictionary::numEntries() const {
  return static_cast<Adesk::UInt32>(std::count_if(
      entries_.begin(), entries_.end(), [](const auto& each) { return !each.second.id.isErased(); }));
}
AcDbDictionaryIterator* AcDbDictionary::newIterator() const { return new AcDbDictionaryIterator(*this); }
void AcDbDictionary::setTreatElementsAsHard(bool hard) { assertWriteEnabled(), hard_ = hard; }
void AcDbDictionary::setMergeStyle(Adesk::Int16 style) { assertWriteEnabled(), merge_ = style; }

Acad::ErrorStatus AcDbDictionary::dwgOutFields(AcDbDwgFiler* filer) const {
  AcDbObject::dwgOutFields(filer);
  filer->writeBool(hard_);
  filer->writeInt16(merge_);
  filer->writeInt32(static_cast<Adesk::Int32>(entries_.size()));
  for (const auto& [key, entry] : entries_) {
    filer->writeString(entry.name.c_str());
    filer->writeSoftOwnershipId(entry.id);
  }
  return filer->filerStatus();
}
Acad::ErrorStatus AcDbDictionary::dwgInFields(AcDbDwgFiler* filer) {
  assertWriteEnabled();
  AcDbObject::dwgInFields(filer);
  filer->readBool(&hard_);
  filer->readInt16(&merge_);
  Adesk::Int32 count = 0;
  filer->readInt32(&count);
  entries_.clear();
  for (; count > 0 && filer->filerStatus() == Acad::eOk; --count) {
    Entry entry;
    host::DwgReader{*filer}(3, entry.name);
    AcDbSoftOwnershipId id;
    if (filer->readSoftOwnershipId(&id) == Acad::eUnknownHandle) filer->resetFilerStatus();
    entry.id = id;
    if (!id.isNull()) entries_[host::symbolKey(entry.name.c_str())] = entry;
  }
  return filer->filerStatus();
}
Acad::ErrorStatus AcDbDictionary::dxfOutFields(AcDbDxfFiler* filer) const {
  AcDbObject::dxfOutFields(filer);
  filer->writeSubclass(L"AcDbDictionary");
  if (hard_) filer->writeInt16(280, 1);
  filer->writeInt16(281, merge_);
  for (const auto& [key, entry] : entries_) {
    if (entry.id.isErased()) continue;
    filer->writeString(3, entry.name.c_str());
    filer->writeObjectId(hard_ ? 360 : 350, entry.id);
  }
  return filer->filerStatus();
}
Acad::ErrorStatus AcDbDictionary::dxfInFields(AcDbDxfFiler* filer) {
  assertWriteEnabled();
  AcDbObject::dxfInFields(filer);
  if (!filer->atSubclassData(L"AcDbDictionary")) return Acad::eBadDxfSequence;
  resbuf item{};
  std::wstring name;
  bool first = true;
  while (filer->readItem(&item) == Acad::eOk) {
    if (item.restype == 280) hard_ = item.resval.rint != 0;
    if (item.restype == 281) merge_ = item.resval.rint;
    if (item.restype == 3) name = item.resval.rstring;
    if (item.restype != 350 && item.restype != 360 && item.restype != 340) continue;
    if (first) entries_.clear(), first = false;
    const AcDbObjectId id(reinterpret_cast<AcDbStub*>(item.resval.rlname[0]));
    if (!id.isNull() && !name.empty()) entries_[host::symbolKey(name.c_str())] = {name, id};
  }
  return filer->filerStatus();
}

AcDbDictionaryIterator::AcDbDictionaryIterator(const AcDbDictionary& dictionary)
    : dictionary_(dictionary), at_(dictionary.entries_.begin()) {
  skipErased();
}
void AcDbDictionaryIterator::skipErased() {
  while (!done() && objectId().isErased()) ++at_;
}
bool AcDbDictionaryIterator::next() {
  if (!done()) ++at_, skipErased();
  return !done();
}

Acad::ErrorStatus AcDbDictionaryWithDefault::setDefaultId(AcDbObjectId id) {
  return assertWriteEnabled(), default_ = id, Acad::eOk;
}
Acad::ErrorStatus AcDbDictionaryWithDefault::dwgOutFields(AcDbDwgFiler* filer) const {
  AcDbDictionary::dwgOutFields(filer);
  return filer->writeHardPointerId(default_);
}
Acad::ErrorStatus AcDbDictionaryWithDefault::dwgInFields(AcDbDwgFiler* filer) {
  AcDbDictionary::dwgInFields(filer);
  host::DwgReader{*filer}.hard(340, default_);
  return filer->filerStatus();
}
Acad::ErrorStatus AcDbDictionaryWithDefault::dxfOutFields(AcDbDxfFiler* filer) const {
  AcDbDictionary::dxfOutFields(filer);
  filer->writeSubclass(L"AcDbDictionaryWithDefault");
  return filer->writeObjectId(340, default_);
}
Acad::ErrorStatus AcDbDictionaryWithDefault::dxfInFields(AcDbDxfFiler* filer) {
  const Acad::ErrorStatus status = AcDbDictionary::dxfInFields(filer);
  if (status != Acad::eOk) return status;
  return host::readDxf(filer, L"AcDbDictionaryWithDefault", [this](auto& v) { v.hard(340, default_); });
}
