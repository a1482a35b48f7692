#pragma once

#include <cstring>
#include <vector>

#include "brx/db_filers.h"
#include "brx/lisp_calls.h"

namespace host {

/// Fields in memory, for copies and for undo. Ids stand as they are, so that the bytes mean something
/// only while the database is open.
class MemoryFiler : public AcDbDwgFiler {
 public:
  explicit MemoryFiler(AcDb::FilerType type, std::vector<unsigned char> bytes = {})
      : type_(type), bytes_(std::move(bytes)) {}
  std::vector<unsigned char> take() { return std::move(bytes_); }
  void rewind() { position_ = 0; }

  AcDb::FilerType filerType() const override { return type_; }
  Acad::ErrorStatus filerStatus() const override { return status_; }
  void setFilerStatus(Acad::ErrorStatus status) override { status_ = status; }
  Acad::ErrorStatus writeBytes(const void* bytes, Adesk::UInt32 count) override {
    const auto* const from = static_cast<const unsigned char*>(bytes);
    bytes_.insert(bytes_.end(), from, from + count);
    return status_;
  }
  Acad::ErrorStatus readBytes(void* bytes, Adesk::UInt32 count) override {
    if (status_ == Acad::eOk && count > bytes_.size() - position_) status_ = Acad::eEndOfFile;
    if (status_ != Acad::eOk) {
      std::memset(bytes, 0, count);
    } else if (count) {
      std::memcpy(bytes, bytes_.data() + position_, count);
      position_ += count;
    }
    return status_;
  }
  Acad::ErrorStatus writeString(const ACHAR* text) override {
    const auto length = static_cast<Adesk::UInt32>(std::wcslen(text));
    writeBytes(&length, sizeof length);
    return writeBytes(text, length * sizeof(ACHAR));
  }
  Acad::ErrorStatus readString(ACHAR** text) override {
    Adesk::UInt32 length = 0;
    readBytes(&length, sizeof length);
    if (status_ == Acad::eOk && length > (bytes_.size() - position_) / sizeof(ACHAR))
      status_ = Acad::eEndOfFile;
    if (status_ != Acad::eOk) length = 0;
    *text = new ACHAR[length + 1]{};
    return readBytes(*text, length * sizeof(ACHAR));
  }
  Acad::ErrorStatus writeHardPointerId(const AcDbHardPointerId& id) override { return writeId(id); }
  Acad::ErrorStatus readHardPointerId(AcDbHardPointerId* id) override { return readId(id); }
  Acad::ErrorStatus writeSoftPointerId(const AcDbSoftPointerId& id) override { return writeId(id); }
  Acad::ErrorStatus readSoftPointerId(AcDbSoftPointerId* id) override { return readId(id); }
  Acad::ErrorStatus writeHardOwnershipId(const AcDbHardOwnershipId& id) override { return writeId(id); }
  Acad::ErrorStatus readHardOwnershipId(AcDbHardOwnershipId* id) override { return readId(id); }
  Acad::ErrorStatus writeSoftOwnershipId(const AcDbSoftOwnershipId& id) override { return writeId(id); }
  Acad::ErrorStatus readSoftOwnershipId(AcDbSoftOwnershipId* id) override { return readId(id); }

 private:
  Acad::ErrorStatus writeId(const AcDbObjectId& id) {
    AcDbStub* const stub = id.stub();
    return writeBytes(&stub, sizeof stub);
  }
  template <class Id>
  Acad::ErrorStatus readId(Id* id) {
    AcDbStub* stub = nullptr;
    readBytes(&stub, sizeof stub);
    *id = AcDbObjectId(stub);
    return status_;
  }

  AcDb::FilerType type_;
  std::vector<unsigned char> bytes_;
  size_t position_ = 0;
  Acad::ErrorStatus status_ = Acad::eOk;
};

}  // namespace host
