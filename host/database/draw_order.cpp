#include <set>

#include "brx/db_dictionary.h"
#include "host/database/fields.h"

ACRX_DEFINE_MEMBERS(AcDbSortentsTable)

/// An entity is drawn at the place of its handle, or of the handle that the table gives to it instead.
/// Moving entities hands the same set of handles out in the new order, so that the table stays as
/// small as what was moved across.

void AcDbSortentsTable::setBlockId(AcDbObjectId block) { assertWriteEnabled(), block_ = block; }

Acad::ErrorStatus AcDbSortentsTable::getFullDrawOrder(AcDbObjectIdArray& ids) const {
  const AcDbBlockTableRecord* const record = AcDbBlockTableRecord::cast(host::objectOf(block_));
  if (!record) return Acad::eNullObjectId;
  std::vector<std::pair<AcDbHandle, AcDbObjectId>> order;
  for (const AcDbObjectId& id : record->entityIds()) {
    if (id.isErased()) continue;
    const auto own = handles_.find(id);
    order.emplace_back(own == handles_.end() ? id.handle() : own->second, id);
  }
  std::stable_sort(order.begin(), order.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  ids.removeAll();
  for (const auto& each : order) ids.append(each.second);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSortentsTable::move(const AcDbObjectIdArray& ids, bool toTop) {
  for (const AcDbObjectId& id : ids) {
    if (id.isNull() || id.stub()->owner != block_.stub()) return Acad::eInvalidInput;
  }
  AcDbObjectIdArray order;
  const Acad::ErrorStatus status = getFullDrawOrder(order);
  if (status != Acad::eOk) return status;
  assertWriteEnabled();
  std::vector<AcDbHandle> places;
  for (const AcDbObjectId& id : order) {
    const auto own = handles_.find(id);
    places.push_back(own == handles_.end() ? id.handle() : own->second);
  }
  const std::set<AcDbObjectId> moved(ids.begin(), ids.end());
  std::stable_partition(order.begin(), order.end(),
                        [&](const AcDbObjectId& id) { return moved.contains(id) != toTop; });
  for (int i = 0; i < order.length(); ++i) {
    const AcDbHandle place = places[static_cast<size_t>(i)];
    if (place == order[i].handle()) {
      handles_.erase(order[i]);
    } else {
      handles_[order[i]] = place;
    }
  }
  return Acad::eOk;
}
Acad::ErrorStatus AcDbSortentsTable::moveToBottom(const AcDbObjectIdArray& ids) { return move(ids, false); }
Acad::ErrorStatus AcDbSortentsTable::moveToTop(const AcDbObjectIdArray& ids) { return move(ids, true); }

Acad::ErrorStatus AcDbSortentsTable::dwgOutFields(AcDbDwgFiler* filer) const {
  AcDbObject::dwgOutFields(filer);
  filer->writeSoftPointerId(block_);
  filer->writeInt32(static_cast<Adesk::Int32>(handles_.size()));
  for (const auto& [id, handle] : handles_) {
    filer->writeSoftPointerId(id);
    filer->writeInt64(static_cast<Adesk::Int64>(handle));
  }
  return filer->filerStatus();
}
Acad::ErrorStatus AcDbSortentsTable::dwgInFields(AcDbDwgFiler* filer) {
  assertWriteEnabled();
  AcDbObject::dwgInFields(filer);
  host::DwgReader reader{*filer};
  reader.soft(330, block_);
  Adesk::Int32 count = 0;
  filer->readInt32(&count);
  handles_.clear();
  for (; count > 0 && filer->filerStatus() == Acad::eOk; --count) {
    AcDbObjectId id;
    Adesk::Int64 handle = 0;
    reader.soft(331, id);
    filer->readInt64(&handle);
    if (!id.isNull()) handles_[id] = static_cast<AcDbHandle>(handle);
  }
  return filer->filerStatus();
}
Acad::ErrorStatus AcDbSortentsTable::dxfOutFields(AcDbDxfFiler* filer) const {
  AcDbObject::dxfOutFields(filer);
  filer->writeSubclass(L"AcDbSortentsTable");
  filer->writeObjectId(330, block_);
  for (const auto& [id, handle] : handles_) {
    if (id.isErased()) continue;
    filer->writeObjectId(331, id);
    ACHAR digits[20];
    std::swprintf(digits, std::size(digits), L"%llX", static_cast<unsigned long long>(handle));
    filer->writeString(5, digits);
  }
  return filer->filerStatus();
}
Acad::ErrorStatus AcDbSortentsTable::dxfInFields(AcDbDxfFiler* filer) {
  assertWriteEnabled();
  AcDbObject::dxfInFields(filer);
  if (!filer->atSubclassData(L"AcDbSortentsTable")) return Acad::eBadDxfSequence;
  handles_.clear();
  resbuf item{};
  AcDbObjectId entity;
  while (filer->readItem(&item) == Acad::eOk) {
    host::DxfReader reader{*filer, item};
    reader.soft(330, block_), reader.soft(331, entity);
    if (item.restype == 5 && !entity.isNull())
      handles_[entity] = std::wcstoull(item.resval.rstring, nullptr, 16);
  }
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbBlockTableRecord::getSortentsTable(AcDbSortentsTable*& table, AcDb::OpenMode mode,
                                                         bool createIfNecessary) {
  table = nullptr;
  AcDbDictionary* dictionary = nullptr;
  Acad::ErrorStatus status = acdbOpenObject(dictionary, extensionDictionary(), AcDb::kForRead);
  if (status == Acad::eOk) {
    status = dictionary->getAt(L"ACAD_SORTENTS", table, mode);
    dictionary->close();
    if (status != Acad::eKeyNotFound) return status;
  }
  if (!createIfNecessary) return Acad::eKeyNotFound;
  // Read access does, as with the host: the table is no part of the record's own data.
  const bool wasReading = !isWriteEnabled();
  if (wasReading && (status = upgradeOpen()) != Acad::eOk) return status;
  createExtensionDictionary();
  if (wasReading) downgradeOpen();
  status = acdbOpenObject(dictionary, extensionDictionary(), AcDb::kForWrite);
  if (status != Acad::eOk) return status;
  auto* const made = new AcDbSortentsTable;
  AcDbObjectId id;
  dictionary->setAt(L"ACAD_SORTENTS", made, id);
  dictionary->close();
  made->setBlockId(objectId());
  if (mode == AcDb::kForRead) made->downgradeOpen();
  table = made;
  return Acad::eOk;
}
