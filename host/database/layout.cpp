#include "brx/db_dictionary.h"
#include "host/database/fields.h"

ACRX_DEFINE_MEMBERS(AcDbLayout)

AcDbLayout::AcDbLayout()
    : plotSettings_(std::make_unique<host::GroupList>()), others_(std::make_unique<host::GroupList>()) {}
AcDbLayout::~AcDbLayout() = default;

Acad::ErrorStatus AcDbLayout::setLayoutName(const ACHAR* name) {
  if (!name || !*name) return Acad::eInvalidInput;
  return assertWriteEnabled(), name_ = name, Acad::eOk;
}
void AcDbLayout::setTabOrder(Adesk::Int16 order) { assertWriteEnabled(), tab_ = order; }
Acad::ErrorStatus AcDbLayout::setBlockTableRecordId(AcDbObjectId record) {
  return assertWriteEnabled(), block_ = record, Acad::eOk;
}

Acad::ErrorStatus AcDbLayout::dwgOutFields(AcDbDwgFiler* filer) const {
  AcDbObject::dwgOutFields(filer);
  filer->writeString(name_.c_str());
  filer->writeInt16(tab_);
  filer->writeSoftPointerId(block_);
  plotSettings_->dwgOut(*filer);
  others_->dwgOut(*filer);
  return filer->filerStatus();
}
Acad::ErrorStatus AcDbLayout::dwgInFields(AcDbDwgFiler* filer) {
  assertWriteEnabled();
  AcDbObject::dwgInFields(filer);
  host::DwgReader reader{*filer};
  reader(1, name_), reader(71, tab_), reader.soft(330, block_);
  plotSettings_->dwgIn(*filer);
  others_->dwgIn(*filer);
  return filer->filerStatus();
}

namespace {

/// What other programs expect of a sheet without settings of its own: letter paper, to the limits.
void writeStandardPlotSettings(AcDbDxfFiler& filer, bool isModel) {
  for (const int code : {1, 2, 4, 6}) filer.writeString(code, code == 2 ? L"none_device" : L"");
  for (const int code : {40, 41, 42, 43, 44, 45, 46, 47, 48, 49, 140, 141}) filer.writeDouble(code, 0);
  filer.writeDouble(142, 1);
  filer.writeDouble(143, 1);
  filer.writeInt16(70, isModel ? 1712 : 688);
  filer.writeInt16(72, 0);
  filer.writeInt16(73, 0);
  filer.writeInt16(74, isModel ? 0 : 5);
  filer.writeString(7, L"");
  filer.writeInt16(75, 16);
  filer.writeDouble(147, 1);
  filer.writeDouble(148, 0);
  filer.writeDouble(149, 0);
}

void writeStandardSheet(AcDbDxfFiler& filer) {
  filer.writeInt16(70, 1);
  filer.writePoint2d(10, {0, 0});
  filer.writePoint2d(11, {12, 9});
  filer.writePoint3d(12, {0, 0, 0});
  filer.writePoint3d(14, {1e20, 1e20, 1e20});
  filer.writePoint3d(15, {-1e20, -1e20, -1e20});
  filer.writeDouble(146, 0);
  filer.writePoint3d(13, {0, 0, 0});
  filer.writePoint3d(16, {1, 0, 0});
  filer.writePoint3d(17, {0, 1, 0});
  filer.writeInt16(76, 0);
}

}  // namespace

Acad::ErrorStatus AcDbLayout::dxfOutFields(AcDbDxfFiler* filer) const {
  AcDbObject::dxfOutFields(filer);
  filer->writeSubclass(L"AcDbPlotSettings");
  if (plotSettings_->empty()) writeStandardPlotSettings(*filer, tab_ == 0);
  plotSettings_->dxfOut(*filer);
  filer->writeSubclass(L"AcDbLayout");
  filer->writeString(1, name_.c_str());
  filer->writeInt16(71, tab_);
  if (others_->empty()) writeStandardSheet(*filer);
  others_->dxfOut(*filer);
  return filer->writeObjectId(330, block_);
}
Acad::ErrorStatus AcDbLayout::dxfInFields(AcDbDxfFiler* filer) {
  assertWriteEnabled();
  AcDbObject::dxfInFields(filer);
  resbuf item{};
  if (filer->atSubclassData(L"AcDbPlotSettings")) {
    plotSettings_->clear();
    while (filer->readItem(&item) == Acad::eOk) plotSettings_->append(item);
  }
  if (!filer->atSubclassData(L"AcDbLayout")) return Acad::eBadDxfSequence;
  others_->clear();
  while (filer->readItem(&item) == Acad::eOk) {
    host::DxfReader reader{*filer, item};
    reader(1, name_), reader(71, tab_), reader.soft(330, block_);
    if (item.restype != 1 && item.restype != 71 && item.restype != 330) others_->append(item);
  }
  return filer->filerStatus();
}
