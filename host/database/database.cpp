#include <cwchar>
#include "brx/db_calls.h"
#include "host/database/kept_for_drawing.h"
#include "host/database/memory_filer.h"
#include "host/database/selection_set.h"
#include "host/database/standard_drawing.h"
#include "host/database/stubs.h"
#include "platform/text/hex.h"
#include "platform/text/letters.h"

namespace {

AcDbDatabase* workingDatabase = nullptr;

}  // namespace

AcDbDatabase* acdbHostWorkingDatabase() { return workingDatabase; }
void acdbSetHostWorkingDatabase(AcDbDatabase* database) { workingDatabase = database; }

AcDbStub*& AcDbDatabaseImp::slot(AcDbHandle handle) {
  auto& page = pages[handle / pageSize];
  if (!page) page = std::make_unique<AcDbStub*[]>(pageSize);
  return page[handle % pageSize];
}

AcDbStub* AcDbDatabaseImp::find(AcDbHandle handle) const {
  const auto page = pages.find(handle / pageSize);
  return page == pages.end() ? nullptr : page->second[handle % pageSize];
}

AcDbStub& AcDbDatabaseImp::make(AcDbDatabase& database, AcDbHandle handle) {
  if (!handle) handle = nextHandle;
  if (handle >= nextHandle) nextHandle = handle + 1;
  AcDbStub& made = stubs.add();
  made.handle = handle;
  made.database = &database;
  return *(slot(handle) = &made);
}

namespace {

template <class Table>
void addTable(AcDbDatabase& database) {
  auto* const table = new Table;
  AcDbObjectId id;
  database.addAcDbObject(id, table);
  table->close();
  database.imp().tables[Table::desc()] = id.stub();
}

}  // namespace

/// Never destroyed: drawings of static life go after it would have.
static std::set<AcDbDatabase*>& drawings() {
  static auto* const instance = new std::set<AcDbDatabase*>;
  return *instance;
}
const std::set<AcDbDatabase*>& host::allDrawings() { return drawings(); }

ACRX_DEFINE_MEMBERS(AcDbDatabase)

AcDbDatabase::AcDbDatabase(bool buildDefaultDrawing, bool) : imp_(std::make_unique<AcDbDatabaseImp>()) {
  host::registerDatabaseClasses();
  drawings().insert(this);
  addTable<AcDbBlockTable>(*this);
  addTable<AcDbLayerTable>(*this);
  addTable<AcDbTextStyleTable>(*this);
  addTable<AcDbLinetypeTable>(*this);
  addTable<AcDbRegAppTable>(*this);
  addTable<AcDbDimStyleTable>(*this);
  addTable<AcDbViewTable>(*this);
  addTable<AcDbUCSTable>(*this);
  addTable<AcDbViewportTable>(*this);
  if (buildDefaultDrawing) host::completeDrawing(*this);
}

AcDbDatabase::~AcDbDatabase() {
  imp_->keptByOthers.clear();
  drawings().erase(this);
  for (AcDbStub& stub : imp_->stubs) {
    if (!stub.object) continue;
    HostAccess::stub(*stub.object) = nullptr;
    delete stub.object;
    stub.object = nullptr;
  }
  if (workingDatabase == this) workingDatabase = nullptr;
}

AcDbObjectId AcDbDatabase::tableId(const AcRxClass* tableClass) const {
  const auto found = imp_->tables.find(tableClass);
  return AcDbObjectId(found == imp_->tables.end() ? nullptr : found->second);
}

AcDbObjectId AcDbDatabaseImp::findRecord(AcDbObjectId tableId, std::wstring_view name) {
  AcDbObjectPointer<AcDbSymbolTable> table(tableId);
  AcDbObjectId id;
  if (table.object()) table->getAt(std::wstring(name).c_str(), id);
  return id;
}

AcDbObjectId AcDbDatabase::layerZero() const { return imp_->standardRecord<AcDbLayerTable>(*this, L"0"); }
AcDbObjectId AcDbDatabase::modelSpaceId() const {
  return imp_->standardRecord<AcDbBlockTable>(*this, ACDB_MODEL_SPACE);
}
AcDbObjectId AcDbDatabase::paperSpaceId() const {
  return imp_->standardRecord<AcDbBlockTable>(*this, ACDB_PAPER_SPACE);
}
AcDbObjectId AcDbDatabase::continuousLinetype() const {
  return imp_->standardRecord<AcDbLinetypeTable>(*this, L"Continuous");
}
AcDbObjectId AcDbDatabase::byLayerLinetype() const {
  return imp_->standardRecord<AcDbLinetypeTable>(*this, L"ByLayer");
}
AcDbObjectId AcDbDatabase::byBlockLinetype() const {
  return imp_->standardRecord<AcDbLinetypeTable>(*this, L"ByBlock");
}

Acad::ErrorStatus AcDbDatabase::addAcDbObject(AcDbObjectId& id, AcDbObject* object, AcDbObjectId owner,
                                              AcDbHandle handle) {
  if (!object) return Acad::eNullObjectPointer;
  if (object->database()) return Acad::eAlreadyInDb;
  AcDbStub* stub = handle ? imp_->find(handle) : nullptr;
  if (stub && stub->object) return Acad::eHandleInUse;
  if (!stub) stub = &imp_->make(*this, handle);
  stub->object = object;
  stub->owner = owner.stub();
  stub->writing = true;
  HostAccess::stub(*object) = stub;
  id = AcDbObjectId(stub);
  if (imp_->openMarks) imp_->journal.push_back({stub, true, {}, 0, {}});
  stub->recordedAt = imp_->markSerial;
  ++imp_->changes;
  imp_->note(*stub);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::getAcDbObjectId(AcDbObjectId& id, bool createIfNotFound, AcDbHandle handle) {
  if (!handle) return Acad::eNullHandle;
  AcDbStub* stub = imp_->find(handle);
  if (!stub && createIfNotFound) stub = &imp_->make(*this, handle);
  id = AcDbObjectId(stub);
  return stub ? Acad::eOk : Acad::eUnknownHandle;
}

AcDbHandle AcDbDatabase::handseed() const { return imp_->nextHandle; }
size_t AcDbDatabase::objectCount() const { return imp_->stubs.size(); }

size_t AcDbDatabase::undoMark() {
  ++imp_->openMarks;
  ++imp_->markSerial;
  return imp_->journal.size();
}

namespace {

/// The fields as they were; a record that had another name is found under it again.
void restore(AcDbObject& object, host::MemoryFiler& filer) {
  AcDbSymbolTableRecord* const record = AcDbSymbolTableRecord::cast(&object);
  const std::wstring name = record ? record->getName() : L"";
  object.dwgInFields(&filer);
  if (!record || record->getName() == name) return;
  AcDbSymbolTable* const table = AcDbSymbolTable::cast(host::objectOf(record->ownerId()));
  if (!table) return;
  HostAccess::rename(*table, host::symbolKey(name.c_str()), host::symbolKey(record->getName().c_str()),
                     record->objectId());
}

}  // namespace

void AcDbDatabase::undoTo(size_t mark) {
  imp_->undoing = true;
  while (imp_->journal.size() > mark) {
    UndoRecord record = std::move(imp_->journal.back());
    imp_->journal.pop_back();
    if (!record.stub) {
      imp_->setHeader(record.variable, std::move(record.value));
      continue;
    }
    record.stub->erased = record.wasErased;
    imp_->note(*record.stub);
    ++imp_->revivals;
    if (record.before.empty()) continue;
    host::MemoryFiler filer(AcDb::kUndoFiler, std::move(record.before));
    restore(*record.stub->object, filer);
  }
  imp_->undoing = false;
  undoKeep(mark);
}

void AcDbDatabase::undoKeep(size_t) {
  if (imp_->openMarks) --imp_->openMarks;
  if (!imp_->openMarks) imp_->journal.clear();
  ++imp_->markSerial;
  ++imp_->changes;
}

namespace host {

std::shared_ptr<void>& keptFor(AcDbDatabase& drawing, std::type_index type) {
  return drawing.imp().keptByOthers[type];
}
std::wstring symbolKey(const ACHAR* name) { return upperCased(name ? name : L""); }

}  // namespace host

Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name) {
  id = AcDbObjectId(reinterpret_cast<AcDbStub*>(name[0]));
  return id.isNull() ? Acad::eInvalidAdsName : Acad::eOk;
}

Acad::ErrorStatus acdbGetAdsName(ads_name name, AcDbObjectId id) {
  if (id.isNull()) return Acad::eNullObjectId;
  name[0] = reinterpret_cast<int64_t>(id.stub());
  name[1] = 0;
  return Acad::eOk;
}

int acdbRegApp(const ACHAR* name) {
  if (!workingDatabase || !name || !*name) return RTERROR;
  AcDbObjectPointer<AcDbRegAppTable> table(workingDatabase->regAppTableId(), AcDb::kForWrite);
  if (!table.object()) return RTERROR;
  if (table->has(name)) return RTNORM;
  auto record = std::make_unique<AcDbRegAppTableRecord>();
  if (record->setName(name) != Acad::eOk || table->add(record.get()) != Acad::eOk) return RTERROR;
  record.release()->close();
  return RTNORM;
}

int acdbHandEnt(const ACHAR* handle, ads_name name) {
  const auto value = readHex(handle ? handle : L"");
  AcDbObjectId id;
  if (!workingDatabase || !value) return RTERROR;
  if (workingDatabase->getAcDbObjectId(id, false, *value) != Acad::eOk || !id.isValid()) return RTERROR;
  return acdbGetAdsName(name, id) == Acad::eOk ? RTNORM : RTERROR;
}

int acdbEntDel(const ads_name name) {
  AcDbObjectId id;
  acdbGetObjectId(id, name);
  AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite, true);
  if (entity.openStatus() != Acad::eOk) return RTERROR;
  return entity->erase(!entity->isErased()) == Acad::eOk ? RTNORM : RTERROR;
}
