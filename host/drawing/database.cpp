#include <cwctype>

#include "brx/db_calls.h"
#include "host/drawing/memory_filer.h"
#include "host/drawing/stubs.h"

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
  AcDbStub& made = stubs.emplace_back();
  made.handle = handle;
  made.database = &database;
  return *(slot(handle) = &made);
}

namespace {

template <class Table>
AcDbStub* addTable(AcDbDatabase& database) {
  auto* const table = new Table;
  AcDbObjectId id;
  database.addAcDbObject(id, table);
  table->close();
  database.imp().tables[Table::desc()] = id.stub();
  return id.stub();
}

template <class Table, class Record>
AcDbObjectId addRecord(AcDbDatabase& database, const ACHAR* name, Record* record) {
  AcDbObjectId id;
  record->setName(name);
  AcDbObjectPointer<Table> table(database.tableId(Table::desc()), AcDb::kForWrite);
  table->add(id, record);
  record->close();
  return id;
}

void buildDefaults(AcDbDatabase& database) {
  AcDbDatabaseImp& imp = database.imp();
  imp.byBlock = addRecord<AcDbLinetypeTable>(database, L"ByBlock", new AcDbLinetypeTableRecord);
  imp.byLayer = addRecord<AcDbLinetypeTable>(database, L"ByLayer", new AcDbLinetypeTableRecord);
  auto* const solid = new AcDbLinetypeTableRecord;
  solid->setPattern(L"Solid line", {});
  imp.continuous = addRecord<AcDbLinetypeTable>(database, L"Continuous", solid);
  auto* const layer = new AcDbLayerTableRecord;
  layer->setLinetypeObjectId(imp.continuous);
  imp.layerZero = imp.clayer = addRecord<AcDbLayerTable>(database, L"0", layer);
  imp.textstyle = addRecord<AcDbTextStyleTable>(database, L"Standard", new AcDbTextStyleTableRecord);
  addRecord<AcDbRegAppTable>(database, L"ACAD", new AcDbRegAppTableRecord);
  addRecord<AcDbDimStyleTable>(database, L"Standard", new AcDbDimStyleTableRecord);
  imp.modelSpace = addRecord<AcDbBlockTable>(database, ACDB_MODEL_SPACE, new AcDbBlockTableRecord);
  addRecord<AcDbBlockTable>(database, ACDB_PAPER_SPACE, new AcDbBlockTableRecord);
}

}  // namespace

ACRX_DEFINE_MEMBERS(AcDbDatabase)

AcDbDatabase::AcDbDatabase(bool buildDefaultDrawing, bool) : imp_(std::make_unique<AcDbDatabaseImp>()) {
  host::registerDatabaseClasses();
  addTable<AcDbBlockTable>(*this);
  addTable<AcDbLayerTable>(*this);
  addTable<AcDbTextStyleTable>(*this);
  addTable<AcDbLinetypeTable>(*this);
  addTable<AcDbRegAppTable>(*this);
  addTable<AcDbDimStyleTable>(*this);
  if (buildDefaultDrawing) buildDefaults(*this);
}

AcDbDatabase::~AcDbDatabase() {
  for (AcDbStub& stub : imp_->stubs) {
    if (stub.object) HostAccess::stub(*stub.object) = nullptr;
    delete stub.object;
  }
  if (workingDatabase == this) workingDatabase = nullptr;
}

AcDbObjectId AcDbDatabase::tableId(const AcRxClass* tableClass) const {
  const auto found = imp_->tables.find(tableClass);
  return AcDbObjectId(found == imp_->tables.end() ? nullptr : found->second);
}

namespace {

/// A default record, looked up by name once where a file has filled the tables.
template <class Table>
AcDbObjectId standard(const AcDbDatabase& database, AcDbObjectId& kept, const ACHAR* name) {
  if (kept.isNull()) {
    AcDbObjectPointer<Table> table(database.tableId(Table::desc()));
    if (table.object()) table->getAt(name, kept);
  }
  return kept;
}

}  // namespace

AcDbObjectId AcDbDatabase::layerZero() const {
  return standard<AcDbLayerTable>(*this, imp_->layerZero, L"0");
}
AcDbObjectId AcDbDatabase::clayer() const { return imp_->clayer.isNull() ? layerZero() : imp_->clayer; }
AcDbObjectId AcDbDatabase::modelSpaceId() const {
  return standard<AcDbBlockTable>(*this, imp_->modelSpace, ACDB_MODEL_SPACE);
}
AcDbObjectId AcDbDatabase::continuousLinetype() const {
  return standard<AcDbLinetypeTable>(*this, imp_->continuous, L"Continuous");
}
AcDbObjectId AcDbDatabase::byLayerLinetype() const {
  return standard<AcDbLinetypeTable>(*this, imp_->byLayer, L"ByLayer");
}
AcDbObjectId AcDbDatabase::byBlockLinetype() const {
  return standard<AcDbLinetypeTable>(*this, imp_->byBlock, L"ByBlock");
}
AcDbObjectId AcDbDatabase::textstyle() const {
  return standard<AcDbTextStyleTable>(*this, imp_->textstyle, L"Standard");
}

Acad::ErrorStatus AcDbDatabase::setClayer(AcDbObjectId layer) {
  AcDbObjectPointer<AcDbLayerTableRecord> record(layer);
  if (record.openStatus() != Acad::eOk) return record.openStatus();
  if (layer.database() != this) return Acad::eWrongDatabase;
  imp_->clayer = layer;
  return Acad::eOk;
}

double AcDbDatabase::dimscale() const { return imp_->dimscale; }
Acad::ErrorStatus AcDbDatabase::setDimscale(double scale) {
  if (!(scale >= 0)) return Acad::eInvalidInput;
  imp_->dimscale = scale;
  return Acad::eOk;
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
  if (imp_->openMarks) imp_->journal.push_back({stub, true, {}});
  stub->recorded = true;
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
  return imp_->journal.size();
}

void AcDbDatabase::undoTo(size_t mark) {
  imp_->undoing = true;
  while (imp_->journal.size() > mark) {
    UndoRecord record = std::move(imp_->journal.back());
    imp_->journal.pop_back();
    record.stub->erased = record.wasErased;
    if (record.before.empty()) continue;
    host::MemoryFiler filer(AcDb::kUndoFiler, std::move(record.before));
    record.stub->object->dwgInFields(&filer);
  }
  imp_->undoing = false;
  if (imp_->openMarks) --imp_->openMarks;
}

namespace host {

std::wstring symbolKey(const ACHAR* name) {
  std::wstring key(name ? name : L"");
  for (wchar_t& letter : key) letter = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(letter)));
  return key;
}

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
  AcDbRegAppTable* table = nullptr;
  if (!workingDatabase || !name || !*name) return RTERROR;
  if (workingDatabase->getRegAppTable(table, AcDb::kForWrite) != Acad::eOk) return RTERROR;
  if (!table->has(name)) {
    auto* const record = new AcDbRegAppTableRecord;
    record->setName(name);
    if (table->add(record) == Acad::eOk) record->close();
  }
  table->close();
  return RTNORM;
}

int acdbHandEnt(const ACHAR* handle, ads_name name) {
  ACHAR* end = nullptr;
  const AcDbHandle value = std::wcstoull(handle ? handle : L"", &end, 16);
  AcDbObjectId id;
  if (!workingDatabase || !end || *end) return RTERROR;
  if (workingDatabase->getAcDbObjectId(id, false, value) != Acad::eOk || !id.isValid()) return RTERROR;
  return acdbGetAdsName(name, id) == Acad::eOk ? RTNORM : RTERROR;
}

int acdbEntDel(const ads_name name) {
  AcDbObjectId id;
  acdbGetObjectId(id, name);
  AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite, true);
  if (entity.openStatus() != Acad::eOk) return RTERROR;
  return entity->erase(!entity->isErased()) == Acad::eOk ? RTNORM : RTERROR;
}

int acdbEntNext(const ads_name after, ads_name name) {
  AcDbObjectPointer<AcDbBlockTableRecord> space(workingDatabase ? workingDatabase->modelSpaceId()
                                                                : AcDbObjectId{});
  if (space.openStatus() != Acad::eOk) return RTERROR;
  const auto& ids = space->entityIds();
  size_t index = 0;
  if (after) {
    const auto* const stub = reinterpret_cast<const AcDbStub*>(after[0]);
    if (!stub || stub->position >= ids.size() || ids[stub->position].stub() != stub) return RTERROR;
    index = stub->position + 1;
  }
  while (index < ids.size() && ids[index].isErased()) ++index;
  return index < ids.size() && acdbGetAdsName(name, ids[index]) == Acad::eOk ? RTNORM : RTERROR;
}

int acdbEntLast(ads_name name) {
  AcDbObjectPointer<AcDbBlockTableRecord> space(workingDatabase ? workingDatabase->modelSpaceId()
                                                                : AcDbObjectId{});
  if (space.openStatus() != Acad::eOk) return RTERROR;
  const auto& ids = space->entityIds();
  for (auto each = ids.rbegin(); each != ids.rend(); ++each) {
    if (!each->isErased()) return acdbGetAdsName(name, *each) == Acad::eOk ? RTNORM : RTERROR;
  }
  return RTERROR;
}
