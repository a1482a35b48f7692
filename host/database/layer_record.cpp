#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "brx/db_dictionary.h"
#include "host/database/record_fields.h"

ACRX_DEFINE_MEMBERS(AcDbLayerTableRecord)

/// In files the index of a layer that is off is negative.
template <class Visitor, class Self>
void AcDbLayerTableRecord::fields(Visitor& v, Self& o) {
  head(v, o);
  if constexpr (std::is_same_v<Visitor, host::DxfWriter>) {
    const auto index = static_cast<Adesk::Int16>(o.color_.colorIndex());
    v(62, static_cast<Adesk::Int16>(o.off_ ? -index : index));
    if (o.color_.isByColor()) v(420, static_cast<Adesk::Int32>(o.color_.rgb()));
  } else {
    v.colour(62, 420, o.color_);
  }
  if constexpr (std::is_same_v<Visitor, host::DxfReader>) {
    if (v.is(62)) o.off_ = v.item.resval.rint < 0;
  }
  v.template named<AcDbLinetypeTable>(6, o.linetype_, L"Continuous"), v(370, o.lineWeight_);
  v.hidden(o.off_), v.flag(290, o.plottable_, true), v.hard(390, o.plotStyle_), v.hidden(o.description_);
}
HOST_FILING(AcDbLayerTableRecord, AcDbSymbolTableRecord, fields)

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
