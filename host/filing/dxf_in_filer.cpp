#include "host/filing/dxf_in_filer.h"

#include <algorithm>
#include <limits>

#include "brx/db_database.h"
#include "host/database/group_codes.h"
#include "platform/text/hex.h"

namespace host {
namespace {

bool isMark(const DxfGroup& group) { return group.code == 100 || group.code == 101; }

bool sameName(std::string_view narrow, const ACHAR* wide) {
  for (const char c : narrow) {
    if (!*wide || *wide != static_cast<unsigned char>(c)) return false;
    ++wide;
  }
  return !*wide;
}

/// False when a character is no hexadecimal digit; what stands before it is kept.
bool readChunk(const DxfGroup& group, std::string& bytes) {
  bytes.clear();
  if (group.binary) return bytes = group.raw, true;
  for (size_t i = 0; i + 1 < group.raw.size(); i += 2) {
    const auto byte = readHex(group.raw.substr(i, 2));
    if (!byte) return false;
    bytes += static_cast<char>(*byte);
  }
  return group.raw.size() % 2 == 0;
}

}  // namespace

void DxfInFiler::begin(const DxfRecord& record, bool useMarks) {
  record_ = &record;
  handle_ = record.handle;
  status_ = Acad::eOk;
  hidesNames_ = keepsPlanar_ = false;
  sections_.clear();
  if (useMarks && std::any_of(record.body.begin(), record.body.end(), isMark)) split();
  rewind();
}

void DxfInFiler::rewind() {
  index_ = former_ = 0;
  section_ = sections_.size();
}

void DxfInFiler::split() {
  const auto& body = record_->body;
  for (size_t i = 0; i < body.size(); ++i) {
    if (!isMark(body[i])) continue;
    if (!sections_.empty()) sections_.back().last = i;
    // What belongs to an embedded object is none of the class's own fields.
    sections_.push_back({body[i].code == 100 ? body[i].raw : std::string_view(), i + 1, body.size()});
  }
}

bool DxfInFiler::atSubclassData(const ACHAR* subclass) {
  if (sections_.empty()) {
    rewind();
    return true;
  }
  for (size_t i = 0; i < sections_.size(); ++i) {
    if (!sameName(sections_[i].name, subclass)) continue;
    section_ = i;
    index_ = former_ = sections_[i].first;
    return true;
  }
  return false;
}

/// Some classes have two sections of one name; they are read as one.
bool DxfInFiler::continueSection() {
  for (size_t i = section_ + 1; i < sections_.size(); ++i) {
    if (sections_[i].name.empty() || sections_[i].name != sections_[section_].name) continue;
    section_ = i;
    index_ = sections_[i].first;
    return true;
  }
  return false;
}

Acad::ErrorStatus DxfInFiler::readItem(resbuf* item) {
  if (status_ != Acad::eOk) return status_;
  former_ = index_;
  const bool inSection = section_ < sections_.size();
  for (;;) {
    if (index_ < (inSection ? sections_[section_].last : record_->body.size())) {
      if (!hidesNames_ || record_->body[index_].code != 2) break;
      ++index_;
    } else if (!inSection || !continueSection()) {
      return Acad::eEndOfObject;
    }
  }
  if (takesTextInPieces()) {
    takeTextInPieces(*item);
  } else {
    index_ += takeItem(record_->body, index_, keepsPlanar_, *item);
  }
  return Acad::eOk;
}

Acad::ErrorStatus DxfInFiler::pushBackItem() {
  index_ = former_;
  return Acad::eOk;
}

/// Long texts stand in pieces under code 3 before the last one under code 1.
bool DxfInFiler::takesTextInPieces() const {
  const DxfGroup& group = record_->body[index_];
  if (group.code != 3 && group.code != 1) return false;
  return record_->name == "MTEXT" &&
         (section_ >= sections_.size() || sections_[section_].name == "AcDbMText");
}

void DxfInFiler::takeTextInPieces(resbuf& item) {
  const size_t last = section_ < sections_.size() ? sections_[section_].last : record_->body.size();
  std::string whole;
  bool ended = false;
  while (!ended && index_ < last && (record_->body[index_].code == 3 || record_->body[index_].code == 1)) {
    ended = record_->body[index_].code == 1;
    whole += record_->body[index_++].raw;
  }
  // Letters and marks may be cut apart between pieces, so that they are decoded together.
  texts_.decode(whole, text_, Carets::plain);
  item = {};
  item.restype = 1;
  item.resval.rstring = text_.data();
}

void DxfInFiler::complain(const DxfGroup& group, const wchar_t* what) {
  report_.add(group.place, handle_, L"group " + std::to_wstring(group.code) + L": " + what + L"; 0 is taken");
}

size_t DxfInFiler::takeItem(const std::vector<DxfGroup>& groups, size_t index, bool keepPlanar,
                            resbuf& item) {
  const DxfGroup& group = groups[index];
  item = {};
  item.restype = static_cast<int16_t>(group.code);
  const auto real = [&](const DxfGroup& from) {
    double value = 0;
    if (!from.real(value)) complain(from, L"a finite number is expected");
    return value;
  };
  const auto integer = [&](int64_t least, int64_t most) {
    int64_t value = 0;
    if (!group.integer(value)) complain(group, L"a whole number is expected");
    if (value >= least && value <= most) return value;
    complain(group, L"the number is too large");
    return int64_t{0};
  };
  switch (groupKind(group.code)) {
    case GroupKind::text:
      texts_.decode(group.raw, text_);
      item.resval.rstring = text_.data();
      return 1;
    case GroupKind::real:
      item.resval.rreal = real(group) * (isAngle(group.code) ? radiansOfDegree : 1);
      return 1;
    case GroupKind::point: {
      size_t used = 1;
      item.resval.rpoint[0] = real(group);
      const double absent = keepPlanar ? std::numeric_limits<double>::quiet_NaN() : 0;
      item.resval.rpoint[1] = item.resval.rpoint[2] = absent;
      while (used < 3 && index + used < groups.size() &&
             groups[index + used].code == group.code + 10 * static_cast<int>(used)) {
        item.resval.rpoint[used] = real(groups[index + used]);
        ++used;
      }
      return used;
    }
    case GroupKind::int32:
      // Colours and flags are also written without a sign.
      item.resval.rlong = static_cast<int32_t>(
          integer(std::numeric_limits<int32_t>::min(), std::numeric_limits<uint32_t>::max()));
      return 1;
    case GroupKind::int64:
      item.resval.mnInt64 = integer(std::numeric_limits<int64_t>::min(), std::numeric_limits<int64_t>::max());
      return 1;
    case GroupKind::int16:
      item.resval.rint = static_cast<int16_t>(
          integer(std::numeric_limits<int16_t>::min(), std::numeric_limits<uint16_t>::max()));
      return 1;
    case GroupKind::boolean:
      item.resval.rint = integer(0, 255) != 0;
      return 1;
    case GroupKind::handle: {
      uint64_t handle = 0;
      if (!group.handle(handle)) complain(group, L"a handle is expected");
      AcDbObjectId id;
      if (handle && handle <= highest_) database_.getAcDbObjectId(id, true, handle);
      item.resval.rlname[0] = reinterpret_cast<int64_t>(id.stub());
      return 1;
    }
    case GroupKind::binary:
      if (!readChunk(group, bytes_)) complain(group, L"hexadecimal digits are expected");
      bytes_.resize(std::min<size_t>(bytes_.size(), std::numeric_limits<int16_t>::max()));
      item.resval.rbinary = {static_cast<short>(bytes_.size()), bytes_.data()};
      return 1;
  }
  return 1;
}

}  // namespace host
