#include "brx/db_tables.h"

#include "host/database/stubs.h"

using host::symbolKey;

ACRX_DEFINE_MEMBERS(AcDbSymbolTable)
ACRX_DEFINE_MEMBERS(AcDbBlockTable)
ACRX_DEFINE_MEMBERS(AcDbLayerTable)
ACRX_DEFINE_MEMBERS(AcDbLinetypeTable)
ACRX_DEFINE_MEMBERS(AcDbTextStyleTable)
ACRX_DEFINE_MEMBERS(AcDbRegAppTable)
ACRX_DEFINE_MEMBERS(AcDbDimStyleTable)
ACRX_DEFINE_MEMBERS(AcDbViewTable)
ACRX_DEFINE_MEMBERS(AcDbUCSTable)
ACRX_DEFINE_MEMBERS(AcDbViewportTable)

Acad::ErrorStatus AcDbSymbolTable::getAt(const ACHAR* name, AcDbObjectId& id, bool getErased) const {
  const auto found = byName_.find(symbolKey(name));
  if (found == byName_.end()) return Acad::eKeyNotFound;
  if (found->second.isErased() && !getErased) return Acad::eWasErased;
  id = found->second;
  return Acad::eOk;
}

bool AcDbSymbolTable::has(const ACHAR* name) const {
  AcDbObjectId id;
  return getAt(name, id) == Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbObjectId& id, AcDbSymbolTableRecord* record) {
  if (!record) return Acad::eNullObjectPointer;
  if (record->getName().empty()) return Acad::eInvalidKey;
  // Viewports of one configuration share its name.
  const bool shared = AcDbViewportTable::cast(this) != nullptr;
  if (!shared && has(record->getName().c_str())) return Acad::eDuplicateKey;
  assertWriteEnabled(false);
  if (!database()) return Acad::eNoDatabase;
  const Acad::ErrorStatus status = database()->addAcDbObject(id, record, objectId());
  if (status == Acad::eOk) HostAccess::addRecord(*this, symbolKey(record->getName().c_str()), id);
  return status;
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbSymbolTableRecord* record) {
  AcDbObjectId id;
  return add(id, record);
}

Acad::ErrorStatus AcDbSymbolTable::newIterator(AcDbSymbolTableIterator*& iterator, bool atBeginning,
                                               bool skipDeleted) const {
  iterator = new AcDbSymbolTableIterator(*this, atBeginning, skipDeleted);
  return Acad::eOk;
}
AcDbSymbolTableIterator::AcDbSymbolTableIterator(const AcDbSymbolTable& table, bool atBeginning,
                                                 bool skipDeleted)
    : table_(table) {
  start(atBeginning, skipDeleted);
}
void AcDbSymbolTableIterator::start(bool atBeginning, bool skipDeleted) {
  const auto& ids = table_.recordIds();
  index_ = atBeginning || ids.empty() ? 0 : ids.size() - 1;
  if (skipDeleted && !done() && ids[index_].isErased()) step(atBeginning, true);
}
/// Going back from the first wraps below 0, to an index that counts as done.
void AcDbSymbolTableIterator::step(bool forward, bool skipDeleted) {
  do {
    index_ = forward ? index_ + 1 : index_ - 1;
  } while (skipDeleted && !done() && table_.recordIds()[index_].isErased());
}
Acad::ErrorStatus AcDbSymbolTableIterator::getRecordId(AcDbObjectId& id) const {
  if (done()) return Acad::eInvalidIndex;
  id = table_.recordIds()[index_];
  return Acad::eOk;
}
