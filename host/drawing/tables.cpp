#include <cmath>

#include "host/drawing/fields.h"

using host::symbolKey;

ACRX_DEFINE_MEMBERS(AcDbSymbolTable)
ACRX_DEFINE_MEMBERS(AcDbSymbolTableRecord)
ACRX_DEFINE_MEMBERS(AcDbBlockTable)
ACRX_DEFINE_MEMBERS(AcDbLayerTable)
ACRX_DEFINE_MEMBERS(AcDbLinetypeTable)
ACRX_DEFINE_MEMBERS(AcDbTextStyleTable)
ACRX_DEFINE_MEMBERS(AcDbRegAppTable)
ACRX_DEFINE_MEMBERS(AcDbDimStyleTable)
ACRX_DEFINE_MEMBERS(AcDbLayerTableRecord)
ACRX_DEFINE_MEMBERS(AcDbLinetypeTableRecord)
ACRX_DEFINE_MEMBERS(AcDbTextStyleTableRecord)
ACRX_DEFINE_MEMBERS(AcDbRegAppTableRecord)
ACRX_DEFINE_MEMBERS(AcDbDimStyleTableRecord)
ACRX_DEFINE_MEMBERS(AcDbBlockTableRecord)

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
  if (has(record->getName().c_str())) return Acad::eDuplicateKey;
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

Acad::ErrorStatus AcDbSymbolTableRecord::setName(const ACHAR* name) {
  if (!name || !*name) return Acad::eInvalidInput;
  // A leading star marks the host's own names.
  if (std::wstring_view(name).find_first_of(L"<>/\\\":;?,=`|", 0) != std::wstring_view::npos ||
      std::wstring_view(name).find(L'*', 1) != std::wstring_view::npos) {
    return Acad::eInvalidInput;
  }
  assertWriteEnabled();
  AcDbObjectPointer<AcDbSymbolTable> table(ownerId(), AcDb::kForWrite);
  if (table.object()) {
    AcDbObjectId other;
    if (table->getAt(name, other) == Acad::eOk && !(other == objectId())) return Acad::eDuplicateKey;
    HostAccess::rename(*table.object(), symbolKey(name_.c_str()), symbolKey(name), objectId());
  }
  name_ = name;
  return Acad::eOk;
}

namespace host {
std::wstring nameOfRecord(AcDbObjectId id) {
  AcDbObjectPointer<AcDbSymbolTableRecord> record(id, AcDb::kForRead, true);
  return record.object() ? record->getName() : std::wstring();
}
}  // namespace host

namespace {
void putColor(AcDbDwgFiler* filer, const AcCmColor& color) {
  filer->writeBool(color.isByColor());
  filer->writeInt32(static_cast<Adesk::Int32>(color.isByColor() ? color.rgb() : color.colorIndex()));
}
AcCmColor getColor(AcDbDwgFiler* filer) {
  bool exact = false;
  Adesk::Int32 value = 256;
  filer->readBool(&exact);
  filer->readInt32(&value);
  AcCmColor color;
  if (exact) {
    color.setRGB(static_cast<Adesk::UInt8>(value >> 16), static_cast<Adesk::UInt8>(value >> 8),
                 static_cast<Adesk::UInt8>(value));
  } else {
    color.setColorIndex(static_cast<Adesk::UInt16>(value));
  }
  return color;
}
}  // namespace

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

Acad::ErrorStatus AcDbLayerTableRecord::setIsFrozen(bool frozen) {
  assertWriteEnabled();
  if (frozen && database() && database()->clayer() == objectId()) return Acad::eInvalidInput;
  setFlag(1, frozen);
  return Acad::eOk;
}
void AcDbLayerTableRecord::setIsLocked(bool locked) { assertWriteEnabled(), setFlag(4, locked); }
void AcDbLayerTableRecord::setIsOff(bool off) { assertWriteEnabled(), off_ = off; }
void AcDbLayerTableRecord::setColor(const AcCmColor& color) { assertWriteEnabled(), color_ = color; }
void AcDbLayerTableRecord::setLinetypeObjectId(AcDbObjectId linetype) {
  assertWriteEnabled(), linetype_ = linetype;
}

Acad::ErrorStatus AcDbLayerTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
  AcDbSymbolTableRecord::dwgOutFields(filer);
  putColor(filer, color_);
  filer->writeHardPointerId(linetype_);
  filer->writeInt16(lineWeight_);
  filer->writeBool(off_);
  return filer->writeBool(plottable_);
}
Acad::ErrorStatus AcDbLayerTableRecord::dwgInFields(AcDbDwgFiler* filer) {
  AcDbSymbolTableRecord::dwgInFields(filer);
  color_ = getColor(filer);
  host::DwgReader{*filer}.named<AcDbLinetypeTable>(6, linetype_);
  filer->readInt16(&lineWeight_);
  filer->readBool(&off_);
  return filer->readBool(&plottable_);
}
Acad::ErrorStatus AcDbLayerTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
  AcDbSymbolTableRecord::dxfOutFields(filer);
  filer->writeSubclass(L"AcDbLayerTableRecord");
  filer->writeString(2, getName().c_str());
  filer->writeInt16(70, flags());
  const auto index = static_cast<Adesk::Int16>(color_.colorIndex());
  filer->writeInt16(62, off_ ? static_cast<Adesk::Int16>(-index) : index);
  if (color_.isByColor()) filer->writeInt32(420, static_cast<Adesk::Int32>(color_.rgb()));
  filer->writeString(6, linetype_.isNull() ? L"Continuous" : host::nameOfRecord(linetype_).c_str());
  if (!plottable_) filer->writeBool(290, false);
  return filer->writeInt16(370, lineWeight_);
}
Acad::ErrorStatus AcDbLayerTableRecord::dxfInFields(AcDbDxfFiler* filer) {
  assertWriteEnabled();
  if (!filer->atSubclassData(L"AcDbLayerTableRecord")) return Acad::eBadDxfSequence;
  resbuf item{};
  Acad::ErrorStatus status = Acad::eOk;
  while (status == Acad::eOk && filer->readItem(&item) == Acad::eOk) {
    switch (item.restype) {
      case 2:
        status = setName(item.resval.rstring);
        break;
      case 70:
        setFlag(1, item.resval.rint & 1), setFlag(4, item.resval.rint & 4);
        break;
      case 62:
        off_ = item.resval.rint < 0;
        color_.setColorIndex(static_cast<Adesk::UInt16>(std::abs(item.resval.rint)));
        break;
      case 6: {
        host::DxfReader reader{*filer, item};
        reader.named<AcDbLinetypeTable>(6, linetype_);
        break;
      }
      case 290:
        plottable_ = item.resval.rint != 0;
        break;
      case 370:
        lineWeight_ = item.resval.rint;
        break;
      default:
        break;
    }
  }
  return status == Acad::eOk ? filer->filerStatus() : status;
}

void AcDbLinetypeTableRecord::setPattern(std::wstring comments, std::vector<double> dashes) {
  assertWriteEnabled();
  comments_ = std::move(comments);
  dashes_ = std::move(dashes);
}
double AcDbLinetypeTableRecord::patternLength() const {
  double sum = 0;
  for (const double dash : dashes_) sum += std::abs(dash);
  return sum;
}
Acad::ErrorStatus AcDbLinetypeTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
  AcDbSymbolTableRecord::dwgOutFields(filer);
  filer->writeString(comments_.c_str());
  filer->writeInt16(static_cast<Adesk::Int16>(dashes_.size()));
  for (const double dash : dashes_) filer->writeDouble(dash);
  return filer->filerStatus();
}
Acad::ErrorStatus AcDbLinetypeTableRecord::dwgInFields(AcDbDwgFiler* filer) {
  AcDbSymbolTableRecord::dwgInFields(filer);
  host::DwgReader{*filer}(3, comments_);
  Adesk::Int16 count = 0;
  filer->readInt16(&count);
  dashes_.assign(static_cast<size_t>(std::max<Adesk::Int16>(count, 0)), 0);
  for (double& dash : dashes_) filer->readDouble(&dash);
  return filer->filerStatus();
}
Acad::ErrorStatus AcDbLinetypeTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
  AcDbSymbolTableRecord::dxfOutFields(filer);
  filer->writeSubclass(L"AcDbLinetypeTableRecord");
  filer->writeString(2, getName().c_str());
  filer->writeInt16(70, flags());
  filer->writeString(3, comments_.c_str());
  filer->writeInt16(72, 65);
  filer->writeInt16(73, static_cast<Adesk::Int16>(dashes_.size()));
  filer->writeDouble(40, patternLength());
  for (const double dash : dashes_) {
    filer->writeDouble(49, dash);
    filer->writeInt16(74, 0);
  }
  return filer->filerStatus();
}
Acad::ErrorStatus AcDbLinetypeTableRecord::dxfInFields(AcDbDxfFiler* filer) {
  assertWriteEnabled();
  if (!filer->atSubclassData(L"AcDbLinetypeTableRecord")) return Acad::eBadDxfSequence;
  resbuf item{};
  while (filer->readItem(&item) == Acad::eOk) {
    if (item.restype == 2) setName(item.resval.rstring);
    if (item.restype == 3) comments_ = item.resval.rstring;
    if (item.restype == 49) dashes_.push_back(item.resval.rreal);
  }
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbTextStyleTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
  AcDbSymbolTableRecord::dwgOutFields(filer);
  for (const double value : {textSize_, xScale_, oblique_, priorSize_}) filer->writeDouble(value);
  filer->writeString(fileName_.c_str());
  return filer->writeString(bigFontFileName_.c_str());
}
Acad::ErrorStatus AcDbTextStyleTableRecord::dwgInFields(AcDbDwgFiler* filer) {
  AcDbSymbolTableRecord::dwgInFields(filer);
  for (double* value : {&textSize_, &xScale_, &oblique_, &priorSize_}) filer->readDouble(value);
  host::DwgReader reader{*filer};
  reader(3, fileName_), reader(4, bigFontFileName_);
  return filer->filerStatus();
}
Acad::ErrorStatus AcDbTextStyleTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
  AcDbSymbolTableRecord::dxfOutFields(filer);
  filer->writeSubclass(L"AcDbTextStyleTableRecord");
  filer->writeString(2, getName().c_str());
  filer->writeInt16(70, flags());
  filer->writeDouble(40, textSize_);
  filer->writeDouble(41, xScale_);
  filer->writeDouble(50, oblique_);
  filer->writeInt16(71, 0);
  filer->writeDouble(42, priorSize_);
  filer->writeString(3, fileName_.c_str());
  return filer->writeString(4, bigFontFileName_.c_str());
}
Acad::ErrorStatus AcDbTextStyleTableRecord::dxfInFields(AcDbDxfFiler* filer) {
  assertWriteEnabled();
  if (!filer->atSubclassData(L"AcDbTextStyleTableRecord")) return Acad::eBadDxfSequence;
  resbuf item{};
  while (filer->readItem(&item) == Acad::eOk) {
    switch (item.restype) {
      case 2:
        setName(item.resval.rstring);
        break;
      case 3:
        fileName_ = item.resval.rstring;
        break;
      case 4:
        bigFontFileName_ = item.resval.rstring;
        break;
      case 40:
        textSize_ = item.resval.rreal;
        break;
      case 41:
        xScale_ = item.resval.rreal;
        break;
      case 42:
        priorSize_ = item.resval.rreal;
        break;
      case 50:
        oblique_ = item.resval.rreal;
        break;
      default:
        break;
    }
  }
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbBlockTableRecord::setOrigin(const AcGePoint3d& origin) {
  assertWriteEnabled();
  origin_ = origin;
  return Acad::eOk;
}
bool AcDbBlockTableRecord::isLayout() const {
  const std::wstring key = symbolKey(getName().c_str());
  return key.starts_with(L"*MODEL_SPACE") || key.starts_with(L"*PAPER_SPACE");
}

namespace {

/// Whether the contents of `from` lead to `target`.
bool leadsTo(AcDbObjectId from, AcDbObjectId target) {
  if (from == target) return true;
  AcDbObjectPointer<AcDbBlockTableRecord> record(from);
  if (!record.object()) return false;
  for (const AcDbObjectId& id : record->entityIds()) {
    AcDbObjectPointer<AcDbBlockReference> nested(id);
    if (nested.object() && leadsTo(nested->blockTableRecord(), target)) return true;
  }
  return false;
}

}  // namespace

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity) {
  if (!entity) return Acad::eNullEntityPointer;
  if (entity->database()) return Acad::eAlreadyInDb;
  assertWriteEnabled(false);
  if (!database()) return Acad::eNoDatabase;
  const AcDbBlockReference* const reference = AcDbBlockReference::cast(entity);
  if (reference && !isLayout() && leadsTo(reference->blockTableRecord(), objectId()))
    return Acad::eSelfReference;
  if (entity->layerId().isNull()) entity->setDatabaseDefaults(database());
  const Acad::ErrorStatus status = database()->addAcDbObject(id, entity, objectId());
  if (status == Acad::eOk) HostAccess::addEntity(*this, id);
  return status;
}
Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbEntity* entity) {
  AcDbObjectId id;
  return appendAcDbEntity(id, entity);
}
Acad::ErrorStatus AcDbBlockTableRecord::newIterator(AcDbBlockTableRecordIterator*& iterator, bool,
                                                    bool skipDeleted) const {
  iterator = new AcDbBlockTableRecordIterator(*this, skipDeleted);
  return Acad::eOk;
}
Acad::ErrorStatus AcDbBlockTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
  AcDbSymbolTableRecord::dwgOutFields(filer);
  return filer->writePoint3d(origin_);
}
Acad::ErrorStatus AcDbBlockTableRecord::dwgInFields(AcDbDwgFiler* filer) {
  AcDbSymbolTableRecord::dwgInFields(filer);
  return filer->readPoint3d(&origin_);
}
Acad::ErrorStatus AcDbBlockTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
  AcDbSymbolTableRecord::dxfOutFields(filer);
  filer->writeSubclass(L"AcDbBlockTableRecord");
  return filer->writeString(2, getName().c_str());
}
Acad::ErrorStatus AcDbBlockTableRecord::dxfInFields(AcDbDxfFiler* filer) { return filer->filerStatus(); }

AcDbBlockTableRecordIterator::AcDbBlockTableRecordIterator(const AcDbBlockTableRecord& record,
                                                           bool skipDeleted)
    : record_(record) {
  start(true, skipDeleted);
}
void AcDbBlockTableRecordIterator::start(bool atBeginning, bool skipDeleted) {
  const auto& ids = record_.entityIds();
  index_ = atBeginning || ids.empty() ? 0 : ids.size() - 1;
  if (skipDeleted && !done() && ids[index_].isErased()) step(atBeginning, true);
}
/// Going back from the first wraps below 0, to an index that counts as done.
void AcDbBlockTableRecordIterator::step(bool forward, bool skipDeleted) {
  do {
    index_ = forward ? index_ + 1 : index_ - 1;
  } while (skipDeleted && !done() && record_.entityIds()[index_].isErased());
}
Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntityId(AcDbObjectId& id) const {
  if (done()) return Acad::eInvalidIndex;
  id = record_.entityIds()[index_];
  return Acad::eOk;
}
Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntity(AcDbEntity*& entity, AcDb::OpenMode mode,
                                                          bool openErased) const {
  AcDbObjectId id;
  const Acad::ErrorStatus status = getEntityId(id);
  return status == Acad::eOk ? acdbOpenObject(entity, id, mode, openErased) : status;
}
