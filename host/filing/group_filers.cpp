#include "host/filing/group_filers.h"

#include <cwchar>

namespace host {
namespace {

constexpr int subclassMark = 100;
constexpr const ACHAR* commonSubclass = L"AcDbEntity";

}  // namespace

Acad::ErrorStatus GroupWriter::writeItem(const resbuf& item) {
  if (item.restype == subclassMark) common_ = std::wcscmp(item.resval.rstring, commonSubclass) == 0;
  if (!common_) groups_.append(item);
  return status_;
}

bool GroupReader::atSubclassData(const ACHAR* subclass) {
  next_ = last_ = nullptr;
  if (std::wcscmp(subclass, commonSubclass) == 0) return true;
  for (const resbuf* each = groups_.head(); each; each = each->rbnext) {
    if (each->restype != subclassMark || std::wcscmp(each->resval.rstring, subclass) != 0) continue;
    next_ = each->rbnext;
    return true;
  }
  return false;
}

Acad::ErrorStatus GroupReader::readItem(resbuf* item) {
  if (!next_ || next_->restype == subclassMark) return Acad::eEndOfObject;
  *item = *next_;
  item->rbnext = nullptr;
  last_ = next_;
  next_ = next_->rbnext;
  return Acad::eOk;
}

Acad::ErrorStatus GroupReader::pushBackItem() {
  if (!last_) return Acad::eNotApplicable;
  next_ = last_;
  last_ = nullptr;
  return Acad::eOk;
}

}  // namespace host
