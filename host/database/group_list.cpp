#include "host/database/group_list.h"

#include <cstring>
#include <cwchar>
#include <utility>

#include "brx/lisp_calls.h"
#include "host/database/group_codes.h"

namespace host {
namespace {

constexpr int lastCode = 1071;

bool isText(int code) { return code >= 0 && groupKind(code) == GroupKind::text; }
bool isBinary(int code) { return groupKind(code) == GroupKind::binary; }
bool isHandle(int code) { return groupKind(code) == GroupKind::handle; }
/// Owners are told by their codes; all other references are kept as pointers of their strength.
bool isOwnership(int code) { return (code >= 350 && code <= 369); }

void writeValue(AcDbDwgFiler& filer, const resbuf& item) {
  if (isText(item.restype)) {
    filer.writeString(item.resval.rstring ? item.resval.rstring : L"");
  } else if (isBinary(item.restype)) {
    filer.writeInt16(item.resval.rbinary.clen);
    filer.writeBytes(item.resval.rbinary.buf, static_cast<Adesk::UInt32>(item.resval.rbinary.clen));
  } else if (isHandle(item.restype)) {
    const AcDbObjectId id(reinterpret_cast<AcDbStub*>(item.resval.rlname[0]));
    if (isOwnership(item.restype)) {
      filer.writeHardOwnershipId(id);
    } else {
      filer.writeSoftPointerId(id);
    }
  } else {
    filer.writeBytes(item.resval.rpoint, sizeof(ads_point));
  }
}

void readBinary(AcDbDwgFiler& filer, ads_binary& value) {
  Adesk::Int16 length = 0;
  filer.readInt16(&length);
  value.clen = std::max<Adesk::Int16>(length, 0);
  value.buf = new char[static_cast<size_t>(value.clen) + 1]{};
  filer.readBytes(value.buf, static_cast<Adesk::UInt32>(value.clen));
}

template <class Id, class Read>
int64_t stubOf(AcDbDwgFiler& filer, Read read) {
  Id id;
  // A reference that leads nowhere becomes a null one; the other groups stay.
  if ((filer.*read)(&id) == Acad::eUnknownHandle) filer.resetFilerStatus();
  return reinterpret_cast<int64_t>(id.stub());
}

void readValue(AcDbDwgFiler& filer, resbuf& item) {
  if (isText(item.restype)) {
    filer.readString(&item.resval.rstring);
  } else if (isBinary(item.restype)) {
    readBinary(filer, item.resval.rbinary);
  } else if (isHandle(item.restype)) {
    item.resval.rlname[0] = isOwnership(item.restype)
                                ? stubOf<AcDbHardOwnershipId>(filer, &AcDbDwgFiler::readHardOwnershipId)
                                : stubOf<AcDbSoftPointerId>(filer, &AcDbDwgFiler::readSoftPointerId);
  } else {
    filer.readBytes(item.resval.rpoint, sizeof(ads_point));
  }
}

}  // namespace

size_t xdataSize(const resbuf* data) {
  size_t size = 0;
  for (; data; data = data->rbnext) {
    switch (groupKind(data->restype)) {
      case GroupKind::text:
        size += 4 + std::wcslen(data->resval.rstring);
        break;
      case GroupKind::binary:
        size += 2 + static_cast<size_t>(data->resval.rbinary.clen);
        break;
      case GroupKind::point:
        size += 25;
        break;
      default:
        size += 9;
    }
  }
  return size;
}

resbuf* copyGroup(const resbuf& item) {
  resbuf* const made = acutNewRb(item.restype);
  made->resval = item.resval;
  if (isText(item.restype)) {
    acutNewString(item.resval.rstring, made->resval.rstring);
  } else if (isBinary(item.restype)) {
    const auto length = static_cast<size_t>(std::max<short>(item.resval.rbinary.clen, 0));
    made->resval.rbinary.buf = new char[length + 1]{};
    if (length) std::memcpy(made->resval.rbinary.buf, item.resval.rbinary.buf, length);
  }
  return made;
}

GroupList::GroupList(const GroupList& other) {
  for (const resbuf* each = other.head_; each; each = each->rbnext) append(*each);
}
GroupList& GroupList::operator=(GroupList other) noexcept {
  std::swap(head_, other.head_);
  std::swap(end_, other.end_);
  return *this;
}
GroupList::~GroupList() {
  if (head_) acutRelRb(head_);
}

void GroupList::append(const resbuf& item) {
  resbuf* const made = copyGroup(item);
  (head_ ? end_->rbnext : head_) = made;
  end_ = made;
}
void GroupList::append(int code, const ACHAR* text) {
  resbuf item{};
  item.restype = static_cast<int16_t>(code);
  item.resval.rstring = const_cast<ACHAR*>(text);
  append(item);
}
const resbuf* GroupList::find(int code) const {
  const resbuf* each = head_;
  while (each && each->restype != code) each = each->rbnext;
  return each;
}
resbuf* GroupList::copy() const { return GroupList(*this).release(); }
resbuf* GroupList::release() {
  end_ = nullptr;
  return std::exchange(head_, nullptr);
}

void GroupList::dwgOut(AcDbDwgFiler& filer) const {
  Adesk::Int32 count = 0;
  for (const resbuf* each = head_; each; each = each->rbnext) ++count;
  filer.writeInt32(count);
  for (const resbuf* each = head_; each; each = each->rbnext) {
    filer.writeInt16(each->restype);
    writeValue(filer, *each);
  }
}

void GroupList::dwgIn(AcDbDwgFiler& filer) {
  clear();
  Adesk::Int32 count = 0;
  filer.readInt32(&count);
  for (; count > 0 && filer.filerStatus() == Acad::eOk; --count) {
    Adesk::Int16 code = 0;
    filer.readInt16(&code);
    // Type words of LISP's values would be freed as what they aren't.
    if (code < 0 || code > lastCode) return filer.setFilerStatus(Acad::eInvalidDxfCode);
    resbuf* const made = acutNewRb(code);
    readValue(filer, *made);
    (head_ ? end_->rbnext : head_) = made;
    end_ = made;
  }
}

void GroupList::dxfOut(AcDbDxfFiler& filer) const {
  for (const resbuf* each = head_; each; each = each->rbnext) filer.writeItem(*each);
}

}  // namespace host
