#include <cmath>

#include "host/database/record_fields.h"

ACRX_DEFINE_MEMBERS(AcDbLinetypeTableRecord)

namespace {

using Dashes = std::vector<double>;
using Signs = std::vector<BrxDashSign>;

void fileSign(auto& v, auto& sign) {
  v(0, sign.dash), v(74, sign.flags), v(75, sign.shape), v.hard(340, sign.style), v(46, sign.scale);
  v(50, sign.rotation), v(44, sign.offsetX), v(45, sign.offsetY), v(9, sign.text);
}

/// Their numbers have 16 bits here, and the signs came later.
void fileDashes(host::DwgWriter& v, const Dashes& dashes, const Signs& signs) {
  v(73, static_cast<Adesk::Int16>(dashes.size()));
  for (const double dash : dashes) v(49, dash);
  v(0, static_cast<Adesk::Int16>(signs.size()));
  for (const BrxDashSign& each : signs) fileSign(v, each);
}

void fileDashes(host::DwgReader& v, Dashes& dashes, Signs& signs) {
  Adesk::Int16 count = 0;
  v(73, count);
  dashes.assign(static_cast<size_t>(std::max<Adesk::Int16>(count, 0)), 0);
  for (double& dash : dashes) v(49, dash);
  count = 0;
  v.later(0, count);
  signs.clear();
  for (; count > 0 && v.filer.filerStatus() == Acad::eOk; --count) fileSign(v, signs.emplace_back());
}

void writeSign(host::DxfWriter& v, const BrxDashSign& sign) {
  v(74, sign.flags), v(75, sign.shape), v.hard(340, sign.style), v(46, sign.scale), v(50, sign.rotation);
  v(44, sign.offsetX), v(45, sign.offsetY);
  if (sign.flags & BrxDashSign::isText) v(9, sign.text);
}

void fileDashes(host::DxfWriter& v, const Dashes& dashes, const Signs& signs) {
  double length = 0;
  for (const double dash : dashes) length += std::abs(dash);
  v(72, Adesk::Int16{65}), v(73, static_cast<Adesk::Int16>(dashes.size())), v(40, length);
  auto sign = signs.begin();
  for (size_t i = 0; i < dashes.size(); ++i) {
    const auto isHere = [&] { return sign != signs.end() && sign->dash == static_cast<Adesk::Int16>(i); };
    v(49, dashes[i]);
    if (!isHere()) v(74, Adesk::Int16{0});
    for (; isHere(); ++sign) writeSign(v, *sign);
  }
}

void fileDashes(host::DxfReader& v, Dashes& dashes, Signs& signs) {
  if (v.is(49) && !v.isBegun(&dashes)) signs.clear();
  v.list(49, dashes);
  if (v.is(74) && v.item.resval.rint && !dashes.empty()) {
    signs.emplace_back().dash = static_cast<Adesk::Int16>(dashes.size() - 1);
  }
  const bool hasNoSign = v.is(74) && v.item.resval.rint == 0;
  if (signs.empty() || hasNoSign) return;
  BrxDashSign& sign = signs.back();
  v(74, sign.flags), v(75, sign.shape), v.hard(340, sign.style), v(46, sign.scale), v(50, sign.rotation);
  v(44, sign.offsetX), v(45, sign.offsetY), v(9, sign.text);
}

void fileDashes(host::NoVerbs&, Dashes&, Signs&) {}

}  // namespace

template <class Visitor, class Self>
void AcDbLinetypeTableRecord::fields(Visitor& v, Self& o) {
  head(v, o), v(3, o.comments_), fileDashes(v, o.dashes_, o.signs_);
}
HOST_FILING(AcDbLinetypeTableRecord, AcDbSymbolTableRecord, fields)

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
