#include <cmath>
#include <set>

#include "brx/db_attributes.h"
#include "brx/db_dictionary.h"
#include "host/database/subentities.h"

using host::symbolKey;

ACRX_DEFINE_MEMBERS(AcDbSymbolTable)
ACRX_DEFINE_MEMBERS(AcDbSymbolTableRecord)
ACRX_DEFINE_MEMBERS(AcDbBlockTable)
ACRX_DEFINE_MEMBERS(AcDbLayerTable)
ACRX_DEFINE_MEMBERS(AcDbLinetypeTable)
ACRX_DEFINE_MEMBERS(AcDbTextStyleTable)
ACRX_DEFINE_MEMBERS(AcDbRegAppTable)
ACRX_DEFINE_MEMBERS(AcDbDimStyleTable)
ACRX_DEFINE_MEMBERS(AcDbViewTable)
ACRX_DEFINE_MEMBERS(AcDbUCSTable)
ACRX_DEFINE_MEMBERS(AcDbViewportTable)
ACRX_DEFINE_MEMBERS(AcDbLayerTableRecord)
ACRX_DEFINE_MEMBERS(AcDbLinetypeTableRecord)
ACRX_DEFINE_MEMBERS(AcDbTextStyleTableRecord)
ACRX_DEFINE_MEMBERS(AcDbRegAppTableRecord)
ACRX_DEFINE_MEMBERS(AcDbDimStyleTableRecord)
ACRX_DEFINE_MEMBERS(AcDbViewTableRecord)
ACRX_DEFINE_MEMBERS(AcDbUCSTableRecord)
ACRX_DEFINE_MEMBERS(AcDbViewportTableRecord)
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

namespace {

constexpr int lineWeights[] = {0,  5,  9,  13, 15, 18,  20,  25,  30,  35,  40,  50,
                               53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};

}  // namespace

bool host::isLineWeight(int weight) {
  return std::find(std::begin(lineWeights), std::end(lineWeights), weight) != std::end(lineWeights);
}

Acad::ErrorStatus AcDbLayerTableRecord::setLineWeight(int weight) {
  constexpr int byDefault = -3;
  if (weight != byDefault && !host::isLineWeight(weight)) return Acad::eInvalidInput;
  return assertWriteEnabled(), lineWeight_ = static_cast<Adesk::Int16>(weight), Acad::eOk;
}
Acad::ErrorStatus AcDbLayerTableRecord::setIsPlottable(bool plottable) {
  return assertWriteEnabled(), plottable_ = plottable, Acad::eOk;
}
Acad::ErrorStatus AcDbLayerTableRecord::setDescription(const ACHAR* text) {
  return assertWriteEnabled(), description_ = text ? text : L"", Acad::eOk;
}
std::wstring AcDbLayerTableRecord::plotStyleName() const {
  if (!database()) return {};
  if (database()->plotStyleMode()) return L"Color_" + std::to_wstring(color_.colorIndex());
  AcDbObjectPointer<AcDbDictionary> styles(database()->plotStyleNameDictionaryId());
  std::wstring name = L"Normal";
  if (styles.object() && !plotStyle_.isNull()) styles->nameAt(plotStyle_, name);
  return name;
}
Acad::ErrorStatus AcDbLayerTableRecord::setPlotStyleName(const ACHAR* name) {
  if (!database()) return Acad::eNotInDatabase;
  if (!name || !*name) return Acad::eInvalidInput;
  AcDbObjectPointer<AcDbDictionary> styles(database()->plotStyleNameDictionaryId());
  AcDbObjectId id;
  if (!styles.object() || !styles->has(name)) {
    return database()->plotStyleMode() ? Acad::eNotApplicable : Acad::eKeyNotFound;
  }
  styles->getAt(name, id);
  styles.close();
  return setPlotStyleName(id);
}
Acad::ErrorStatus AcDbLayerTableRecord::setPlotStyleName(AcDbObjectId style) {
  if (!database()) return Acad::eNotInDatabase;
  if (database()->plotStyleMode()) return Acad::eNotApplicable;
  if (style.isNull()) return Acad::eNullObjectId;
  return assertWriteEnabled(), plotStyle_ = style, Acad::eOk;
}

Acad::ErrorStatus AcDbLayerTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
  AcDbSymbolTableRecord::dwgOutFields(filer);
  host::putColour(*filer, color_);
  filer->writeHardPointerId(linetype_);
  filer->writeInt16(lineWeight_);
  filer->writeBool(off_);
  filer->writeBool(plottable_);
  filer->writeHardPointerId(plotStyle_);
  return filer->writeString(description_.c_str());
}
Acad::ErrorStatus AcDbLayerTableRecord::dwgInFields(AcDbDwgFiler* filer) {
  AcDbSymbolTableRecord::dwgInFields(filer);
  color_ = host::getColour(*filer);
  host::DwgReader{*filer}.named<AcDbLinetypeTable>(6, linetype_);
  filer->readInt16(&lineWeight_);
  filer->readBool(&off_);
  filer->readBool(&plottable_);
  host::DwgReader reader{*filer};
  reader.hard(390, plotStyle_), reader(0, description_);
  return filer->filerStatus();
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
  filer->writeInt16(370, lineWeight_);
  if (plotStyle_.isValid()) filer->writeObjectId(390, plotStyle_);
  return filer->filerStatus();
}
Acad::ErrorStatus AcDbLayerTableRecord::dxfInFields(AcDbDxfFiler* filer) {
  assertWriteEnabled();
  if (!filer->atSubclassData(L"AcDbLayerTableRecord")) return Acad::eBadDxfSequence;
  resbuf item{};
  Acad::ErrorStatus status = Acad::eOk;
  host::DxfReader reader{*filer, item};
  while (status == Acad::eOk && filer->readItem(&item) == Acad::eOk) {
    reader.colour(62, 420, color_);
    reader.named<AcDbLinetypeTable>(6, linetype_);
    switch (item.restype) {
      case 2:
        status = setName(item.resval.rstring);
        break;
      case 70:
        takeFlags(item.resval.rint);
        break;
      case 62:
        off_ = item.resval.rint < 0;
        break;
      case 290:
        plottable_ = item.resval.rint != 0;
        break;
      case 390:
        plotStyle_ = AcDbObjectId(reinterpret_cast<AcDbStub*>(item.resval.rlname[0]));
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
  signs_.clear();
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
  filer->writeInt16(static_cast<Adesk::Int16>(signs_.size()));
  for (const BrxDashSign& each : signs_) {
    for (const Adesk::Int16 value : {each.dash, each.flags, each.shape}) filer->writeInt16(value);
    filer->writeHardPointerId(each.style);
    for (const double value : {each.scale, each.rotation, each.offsetX, each.offsetY})
      filer->writeDouble(value);
    filer->writeString(each.text.c_str());
  }
  return filer->filerStatus();
}

namespace {

/// Snapshots of the first format end before the signs.
void readSigns(AcDbDwgFiler& filer, std::vector<BrxDashSign>& signs) {
  Adesk::Int16 count = 0;
  if (filer.readInt16(&count) == Acad::eEndOfFile) filer.resetFilerStatus();
  signs.clear();
  for (; count > 0 && filer.filerStatus() == Acad::eOk; --count) {
    BrxDashSign& each = signs.emplace_back();
    for (Adesk::Int16* const value : {&each.dash, &each.flags, &each.shape}) filer.readInt16(value);
    host::DwgReader reader{filer};
    reader.hard(340, each.style);
    for (double* const value : {&each.scale, &each.rotation, &each.offsetX, &each.offsetY})
      filer.readDouble(value);
    reader(9, each.text);
  }
}

}  // namespace

Acad::ErrorStatus AcDbLinetypeTableRecord::dwgInFields(AcDbDwgFiler* filer) {
  AcDbSymbolTableRecord::dwgInFields(filer);
  host::DwgReader{*filer}(3, comments_);
  Adesk::Int16 count = 0;
  filer->readInt16(&count);
  dashes_.assign(static_cast<size_t>(std::max<Adesk::Int16>(count, 0)), 0);
  for (double& dash : dashes_) filer->readDouble(&dash);
  readSigns(*filer, signs_);
  return filer->filerStatus();
}

namespace {

void writeSign(AcDbDxfFiler& filer, const BrxDashSign& sign) {
  filer.writeInt16(74, sign.flags);
  filer.writeInt16(75, sign.shape);
  if (!sign.style.isNull()) filer.writeObjectId(340, sign.style);
  filer.writeDouble(46, sign.scale);
  filer.writeDouble(50, sign.rotation);
  filer.writeDouble(44, sign.offsetX);
  filer.writeDouble(45, sign.offsetY);
  if (sign.flags & BrxDashSign::isText) filer.writeString(9, sign.text.c_str());
}

}  // namespace

Acad::ErrorStatus AcDbLinetypeTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
  AcDbSymbolTableRecord::dxfOutFields(filer);
  filer->writeSubclass(L"AcDbLinetypeTableRecord");
  filer->writeString(2, getName().c_str());
  filer->writeInt16(70, flags());
  filer->writeString(3, comments_.c_str());
  filer->writeInt16(72, 65);
  filer->writeInt16(73, static_cast<Adesk::Int16>(dashes_.size()));
  filer->writeDouble(40, patternLength());
  auto sign = signs_.begin();
  for (size_t i = 0; i < dashes_.size(); ++i) {
    filer->writeDouble(49, dashes_[i]);
    const bool hasSign = sign != signs_.end() && sign->dash == static_cast<Adesk::Int16>(i);
    if (!hasSign) filer->writeInt16(74, 0);
    for (; sign != signs_.end() && sign->dash == static_cast<Adesk::Int16>(i); ++sign)
      writeSign(*filer, *sign);
  }
  return filer->filerStatus();
}
namespace {

void readSign(host::DxfReader& reader, BrxDashSign& sign) {
  if (reader.item.restype == 74 && reader.item.resval.rint == 0) return;
  reader(74, sign.flags), reader(75, sign.shape), reader.hard(340, sign.style), reader(46, sign.scale);
  reader(50, sign.rotation), reader(44, sign.offsetX), reader(45, sign.offsetY), reader(9, sign.text);
}

}  // namespace

Acad::ErrorStatus AcDbLinetypeTableRecord::dxfInFields(AcDbDxfFiler* filer) {
  assertWriteEnabled();
  if (!filer->atSubclassData(L"AcDbLinetypeTableRecord")) return Acad::eBadDxfSequence;
  resbuf item{};
  host::DxfReader reader{*filer, item};
  while (filer->readItem(&item) == Acad::eOk) {
    if (item.restype == 2) setName(item.resval.rstring);
    if (item.restype == 49 && !reader.isBegun(&dashes_)) signs_.clear();
    reader(3, comments_), reader.list(49, dashes_);
    if (item.restype == 74 && item.resval.rint && !dashes_.empty()) {
      signs_.emplace_back().dash = static_cast<Adesk::Int16>(dashes_.size() - 1);
    }
    if (!signs_.empty()) readSign(reader, signs_.back());
  }
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setTextSize(double size) {
  if (!(size >= 0)) return Acad::eInvalidInput;
  return assertWriteEnabled(), textSize_ = size, Acad::eOk;
}
Acad::ErrorStatus AcDbTextStyleTableRecord::setXScale(double scale) {
  if (!(scale > 0)) return Acad::eInvalidInput;
  return assertWriteEnabled(), xScale_ = scale, Acad::eOk;
}
Acad::ErrorStatus AcDbTextStyleTableRecord::setObliquingAngle(double angle) {
  return assertWriteEnabled(), oblique_ = angle, Acad::eOk;
}
Acad::ErrorStatus AcDbTextStyleTableRecord::setFileName(const ACHAR* file) {
  return assertWriteEnabled(), fileName_ = file ? file : L"", Acad::eOk;
}
Acad::ErrorStatus AcDbTextStyleTableRecord::setBigFontFileName(const ACHAR* file) {
  return assertWriteEnabled(), bigFontFileName_ = file ? file : L"", Acad::eOk;
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
      case 70:
        takeFlags(item.resval.rint);
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

namespace {

constexpr Adesk::Int16 xrefFlag = 4;

/// The name of the subclass is that of the record's class.
template <class Record>
Acad::ErrorStatus readName(Record& record, AcDbDxfFiler* filer) {
  record.assertWriteEnabled();
  if (!filer->atSubclassData(record.isA()->name())) return Acad::eBadDxfSequence;
  resbuf item{};
  while (filer->readItem(&item) == Acad::eOk) {
    if (item.restype == 2) record.setName(item.resval.rstring);
  }
  return filer->filerStatus();
}

}  // namespace

Acad::ErrorStatus AcDbRegAppTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
  return AcDbSymbolTableRecord::dwgOutFields(filer);
}
Acad::ErrorStatus AcDbRegAppTableRecord::dwgInFields(AcDbDwgFiler* filer) {
  return AcDbSymbolTableRecord::dwgInFields(filer);
}
Acad::ErrorStatus AcDbRegAppTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
  AcDbSymbolTableRecord::dxfOutFields(filer);
  filer->writeSubclass(L"AcDbRegAppTableRecord");
  filer->writeString(2, getName().c_str());
  return filer->writeInt16(70, flags());
}
Acad::ErrorStatus AcDbRegAppTableRecord::dxfInFields(AcDbDxfFiler* filer) { return readName(*this, filer); }

BrxGroupsTableRecord::BrxGroupsTableRecord() : groups_(std::make_unique<host::GroupList>()) {}
BrxGroupsTableRecord::~BrxGroupsTableRecord() = default;
void BrxGroupsTableRecord::setGroups(host::GroupList groups) {
  assertWriteEnabled();
  *groups_ = std::move(groups);
}
Acad::ErrorStatus BrxGroupsTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
  AcDbSymbolTableRecord::dwgOutFields(filer);
  groups_->dwgOut(*filer);
  return filer->filerStatus();
}
Acad::ErrorStatus BrxGroupsTableRecord::dwgInFields(AcDbDwgFiler* filer) {
  assertWriteEnabled();
  AcDbSymbolTableRecord::dwgInFields(filer);
  groups_->dwgIn(*filer);
  return filer->filerStatus();
}
Acad::ErrorStatus BrxGroupsTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
  AcDbSymbolTableRecord::dxfOutFields(filer);
  filer->writeSubclass(isA()->name());
  filer->writeString(2, getName().c_str());
  filer->writeInt16(70, flags());
  groups_->dxfOut(*filer);
  return filer->filerStatus();
}
Acad::ErrorStatus BrxGroupsTableRecord::dxfInFields(AcDbDxfFiler* filer) {
  assertWriteEnabled();
  if (!filer->atSubclassData(isA()->name())) return Acad::eBadDxfSequence;
  groups_->clear();
  resbuf item{};
  while (filer->readItem(&item) == Acad::eOk) {
    if (item.restype == 2) {
      setName(item.resval.rstring);
    } else if (item.restype == 70) {
      takeFlags(item.resval.rint);
    } else {
      groups_->append(item);
    }
  }
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbBlockTableRecord::setLayoutId(AcDbObjectId layout) {
  return assertWriteEnabled(), layout_ = layout, Acad::eOk;
}
Acad::ErrorStatus AcDbBlockTableRecord::setComments(const ACHAR* text) {
  return assertWriteEnabled(), comments_ = text ? text : L"", Acad::eOk;
}
bool AcDbBlockTableRecord::hasAttributeDefinitions() const {
  return std::any_of(entities_.begin(), entities_.end(), [](const AcDbObjectId& id) {
    return !id.isErased() && AcDbAttributeDefinition::cast(host::objectOf(id));
  });
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

/// Whether the contents of `from` lead to `target`. Each record is looked into once.
bool leadsTo(AcDbObjectId from, AcDbObjectId target, std::set<AcDbObjectId>& seen) {
  if (from == target) return true;
  if (!seen.insert(from).second) return false;
  const AcDbBlockTableRecord* const record = AcDbBlockTableRecord::cast(host::objectOf(from));
  if (!record) return false;
  return std::any_of(record->entityIds().begin(), record->entityIds().end(), [&](const AcDbObjectId& id) {
    const AcDbBlockReference* const nested = AcDbBlockReference::cast(host::objectOf(id));
    return nested && !id.isErased() && leadsTo(nested->blockTableRecord(), target, seen);
  });
}

}  // namespace

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity) {
  if (!entity) return Acad::eNullEntityPointer;
  if (entity->database()) return Acad::eAlreadyInDb;
  assertWriteEnabled(false);
  if (!database()) return Acad::eNoDatabase;
  const AcDbBlockReference* const reference = AcDbBlockReference::cast(entity);
  std::set<AcDbObjectId> seen;
  if (reference && !isLayout() && leadsTo(reference->blockTableRecord(), objectId(), seen))
    return Acad::eSelfReference;
  if (entity->layerId().isNull()) entity->setDatabaseDefaults(database());
  const Acad::ErrorStatus status = database()->addAcDbObject(id, entity, objectId());
  if (status != Acad::eOk) return status;
  HostAccess::addEntity(*this, id);
  return host::enterSubentities(*entity);
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
  filer->writePoint3d(origin_);
  filer->writeSoftPointerId(layout_);
  filer->writeString(path_.c_str());
  filer->writeString(comments_.c_str());
  for (const Adesk::Int16 value : {units_, explodable_, scaling_}) filer->writeInt16(value);
  return filer->filerStatus();
}
Acad::ErrorStatus AcDbBlockTableRecord::dwgInFields(AcDbDwgFiler* filer) {
  assertWriteEnabled();
  AcDbSymbolTableRecord::dwgInFields(filer);
  filer->readPoint3d(&origin_);
  host::DwgReader reader{*filer};
  reader.soft(340, layout_), reader(1, path_), reader(4, comments_);
  for (Adesk::Int16* value : {&units_, &explodable_, &scaling_}) filer->readInt16(value);
  return filer->filerStatus();
}
/// The record alone: origin, path and comments stand in the block that files have beside it.
Acad::ErrorStatus AcDbBlockTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
  AcDbSymbolTableRecord::dxfOutFields(filer);
  filer->writeSubclass(L"AcDbBlockTableRecord");
  filer->writeString(2, getName().c_str());
  if (!layout_.isNull()) filer->writeObjectId(340, layout_);
  filer->writeInt16(70, units_);
  filer->writeInt16(280, explodable_);
  return filer->writeInt16(281, scaling_);
}
Acad::ErrorStatus AcDbBlockTableRecord::dxfInFields(AcDbDxfFiler* filer) {
  assertWriteEnabled();
  if (!filer->atSubclassData(L"AcDbBlockTableRecord")) return Acad::eBadDxfSequence;
  resbuf item{};
  Acad::ErrorStatus status = Acad::eOk;
  while (status == Acad::eOk && filer->readItem(&item) == Acad::eOk) {
    host::DxfReader reader{*filer, item};
    reader(70, units_), reader(280, explodable_), reader(281, scaling_), reader.soft(340, layout_);
    if (item.restype == 2) status = setName(item.resval.rstring);
  }
  return status == Acad::eOk ? filer->filerStatus() : status;
}
void HostAccess::setBlock(AcDbBlockTableRecord& record, const AcGePoint3d& origin, Adesk::Int16 flags,
                          const std::wstring& path, const std::wstring& comments) {
  record.assertWriteEnabled();
  record.origin_ = origin, record.path_ = path, record.comments_ = comments;
  record.flags_ = static_cast<Adesk::Int16>(path.empty() ? flags & ~xrefFlag : flags);
}

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
