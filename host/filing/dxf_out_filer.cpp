#include "host/filing/dxf_out_filer.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

#include "brx/db_database.h"
#include "host/database/group_codes.h"
#include "host/filing/dxf_in_filer.h"
#include "host/filing/dxf_record.h"

namespace host {
namespace {

bool isMark(const resbuf& item) { return item.restype == 100 || item.restype == 101; }

/// Handles of objects that are gone would lead readers astray.
AcDbHandle livingHandle(const resbuf& item) {
  const AcDbObjectId id(reinterpret_cast<AcDbStub*>(item.resval.rlname[0]));
  return id.isValid() && !id.isErased() ? id.handle() : 0;
}

const resbuf* behindBraces(const resbuf* kept) {
  bool inside = false;
  for (; kept && (inside || kept->restype == 102); kept = kept->rbnext) {
    if (kept->restype == 102) inside = kept->resval.rstring[0] == L'{';
  }
  return kept;
}

/// Length of the next piece of a long text; a mark or a letter isn't cut apart.
size_t pieceLength(std::wstring_view text) {
  constexpr size_t most = 250;
  if (text.size() <= most) return text.size();
  size_t length = most;
  while (length > most - 8 && (text[length - 1] == L'\\' || text[length - 1] == L'^')) --length;
  return length;
}

}  // namespace

double degreesOf(double radians) {
  const double degrees = radians / radiansOfDegree;
  if (!std::isfinite(degrees) || degrees == std::round(degrees)) return degrees;
  // 15 digits give back every shorter number that the angle may have been.
  for (const int digits : {15, 16}) {
    char text[40];
    const auto [end, problem] =
        std::to_chars(text, text + sizeof text, degrees, std::chars_format::scientific, digits - 1);
    double shorter = 0;
    std::from_chars(text, end, shorter);
    if (shorter * radiansOfDegree == radians) return shorter;
  }
  return degrees;
}

void DxfOutFiler::begin(const resbuf* kept, bool paperSpace) {
  kept_ = behindBraces(kept);
  paperSpace_ = paperSpace;
  section_.clear();
  written_.clear();
  codes_.reset();
  status_ = Acad::eOk;
}

Acad::ErrorStatus DxfOutFiler::writeItem(const resbuf& item) {
  if (item.restype < 0 || item.restype > lastGroupCode) return Acad::eInvalidDxfCode;
  if (item.restype == 0) {
    // Another object begins, which belongs to this one.
    end();
    kept_ = nullptr;
    put(item);
    return status_;
  }
  if (isMark(item)) {
    endSection();
    section_ = sectionName(item.resval.rstring);
    if (kept_) written_.push_back(section_);
    put(item);
    if (paperSpace_ && section_ == L"AcDbEntity") sink_.integer(67, 1);
    return status_;
  }
  if (kept_) codes_.set(static_cast<size_t>(item.restype));
  put(item);
  return status_;
}

Acad::ErrorStatus DxfOutFiler::writePoint2d(int code, const AcGePoint2d& value) {
  return writePoint3d(code, {value.x, value.y, std::numeric_limits<double>::quiet_NaN()});
}

/// Puts the kept groups of the section that ends, once where a class has two sections of one name.
void DxfOutFiler::endSection() {
  if (!kept_ || section_.empty()) return;
  const bool isFirst = written_.size() == 1;
  const bool isSecond = std::count(written_.begin(), written_.end(), section_) > 1;
  bool wanted = isFirst;
  for (const resbuf* each = kept_; each && each->restype != 0 && !isSecond; each = each->rbnext) {
    if (isMark(*each)) {
      wanted = each->restype == 100 && section_ == each->resval.rstring;
    } else if (wanted && wireKind(each->restype) != WireKind::none &&
               !codes_.test(static_cast<size_t>(each->restype))) {
      put(*each);
    }
  }
  codes_.reset();
}

/// Kept subclasses that the object doesn't have, and embedded objects.
void DxfOutFiler::end() {
  endSection();
  bool wanted = false;
  for (const resbuf* each = kept_; each && each->restype != 0; each = each->rbnext) {
    if (isMark(*each)) {
      wanted = each->restype == 101 ||
               std::find(written_.begin(), written_.end(), each->resval.rstring) == written_.end();
    }
    if (wanted) put(*each);
  }
}

void DxfOutFiler::put(const resbuf& item) {
  const bool isContents = (item.restype == 1 || item.restype == 3) && section_ == L"AcDbMText";
  if (!isContents) return putGroup(item, sink_);
  std::wstring_view text = item.resval.rstring ? item.resval.rstring : L"";
  for (size_t length = pieceLength(text); length < text.size(); length = pieceLength(text)) {
    sink_.text(3, text.substr(0, length), Carets::plain);
    text.remove_prefix(length);
  }
  sink_.text(item.restype, text, Carets::plain);
}

void putGroup(const resbuf& item, DxfSink& sink) {
  const int code = item.restype;
  if (wireKind(code) == WireKind::none) return;
  switch (groupKind(code)) {
    case GroupKind::text:
      return sink.text(code, item.resval.rstring ? item.resval.rstring : L"");
    case GroupKind::real:
      return sink.real(code, isAngle(code) ? degreesOf(item.resval.rreal) : item.resval.rreal);
    case GroupKind::point:
      for (int i = 0; i < 3 && !(i && std::isnan(item.resval.rpoint[i])); ++i) {
        sink.real(code + 10 * i, item.resval.rpoint[i]);
      }
      return;
    case GroupKind::int32:
      return sink.integer(code, item.resval.rlong);
    case GroupKind::int64:
      return sink.integer(code, item.resval.mnInt64);
    case GroupKind::int16:
    case GroupKind::boolean:
      return sink.integer(code, item.resval.rint);
    case GroupKind::handle:
      return sink.handle(code, livingHandle(item));
    case GroupKind::binary:
      return sink.chunk(
          code, {item.resval.rbinary.buf, static_cast<size_t>(std::max<short>(item.resval.rbinary.clen, 0))});
  }
}

void putBraces(const resbuf* kept, DxfSink& sink) {
  for (const resbuf* const end = behindBraces(kept); kept != end; kept = kept->rbnext) putGroup(*kept, sink);
}

void putGroups(const resbuf* list, DxfSink& sink) {
  for (; list; list = list->rbnext) putGroup(*list, sink);
}

}  // namespace host
