#include "brx/db_dictionary.h"
#include "host/database/fields.h"

ACRX_DEFINE_MEMBERS(AcDbXrecord)

AcDbXrecord::AcDbXrecord() : data_(std::make_unique<host::GroupList>()) {}
AcDbXrecord::~AcDbXrecord() = default;

namespace {

/// Handles of the record itself, marks and extended data don't belong into free data.
bool isDataCode(int code) { return code > 0 && code < 1000 && code != 5 && code != 100 && code != 105; }

}  // namespace

Acad::ErrorStatus AcDbXrecord::rbChain(resbuf** list) const {
  if (!list) return Acad::eInvalidInput;
  *list = data_->copy();
  return Acad::eOk;
}
Acad::ErrorStatus AcDbXrecord::setFromRbChain(const resbuf& list) {
  host::GroupList made;
  for (const resbuf* each = &list; each; each = each->rbnext) {
    if (!isDataCode(each->restype)) return Acad::eInvalidResBuf;
    made.append(*each);
  }
  assertWriteEnabled();
  *data_ = std::move(made);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbXrecord::dwgOutFields(AcDbDwgFiler* filer) const {
  AcDbObject::dwgOutFields(filer);
  filer->writeInt16(cloning_);
  data_->dwgOut(*filer);
  return filer->filerStatus();
}
Acad::ErrorStatus AcDbXrecord::dwgInFields(AcDbDwgFiler* filer) {
  assertWriteEnabled();
  AcDbObject::dwgInFields(filer);
  filer->readInt16(&cloning_);
  data_->dwgIn(*filer);
  return filer->filerStatus();
}
Acad::ErrorStatus AcDbXrecord::dxfOutFields(AcDbDxfFiler* filer) const {
  AcDbObject::dxfOutFields(filer);
  filer->writeSubclass(L"AcDbXrecord");
  filer->writeInt16(280, cloning_);
  data_->dxfOut(*filer);
  return filer->filerStatus();
}
/// The first 280 is how the record is copied, unless data stand before it; others are data.
Acad::ErrorStatus AcDbXrecord::dxfInFields(AcDbDxfFiler* filer) {
  assertWriteEnabled();
  AcDbObject::dxfInFields(filer);
  if (!filer->atSubclassData(L"AcDbXrecord")) return Acad::eBadDxfSequence;
  data_->clear();
  resbuf item{};
  bool first = true;
  for (; filer->readItem(&item) == Acad::eOk; first = false) {
    if (first && item.restype == 280) {
      cloning_ = item.resval.rint;
    } else if (isDataCode(item.restype)) {
      data_->append(item);
    }
  }
  return filer->filerStatus();
}
