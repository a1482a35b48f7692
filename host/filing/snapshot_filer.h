#pragma once

#include <cstring>
#include <string>
#include <string_view>

#include "brx/db_filers.h"
#include "brx/lisp_calls.h"
#include "host/database/stubs.h"
#include "platform/text/utf.h"

namespace host {

/// Fields of objects in a snapshot: numbers as they lie in memory, texts in UTF-8 behind their length,
/// ids as handles of 64 bits.
class SnapshotFiler : public AcDbDwgFiler {
 public:
  AcDb::FilerType filerType() const override { return AcDb::kFileFiler; }
  Acad::ErrorStatus filerStatus() const override { return status_; }
  void setFilerStatus(Acad::ErrorStatus status) override { status_ = status; }
  Acad::ErrorStatus writeHardPointerId(const AcDbHardPointerId& id) override { return writeId(id); }
  Acad::ErrorStatus readHardPointerId(AcDbHardPointerId* id) override { return readId(*id); }
  Acad::ErrorStatus writeSoftPointerId(const AcDbSoftPointerId& id) override { return writeId(id); }
  Acad::ErrorStatus readSoftPointerId(AcDbSoftPointerId* id) override { return readId(*id); }
  Acad::ErrorStatus writeHardOwnershipId(const AcDbHardOwnershipId& id) override { return writeId(id); }
  Acad::ErrorStatus readHardOwnershipId(AcDbHardOwnershipId* id) override { return readId(*id); }
  Acad::ErrorStatus writeSoftOwnershipId(const AcDbSoftOwnershipId& id) override { return writeId(id); }
  Acad::ErrorStatus readSoftOwnershipId(AcDbSoftOwnershipId* id) override { return readId(*id); }

 protected:
  virtual Acad::ErrorStatus writeId(const AcDbObjectId&) { return Acad::eIsReading; }
  virtual Acad::ErrorStatus readId(AcDbObjectId&) { return Acad::eIsWriting; }
  Acad::ErrorStatus status_ = Acad::eOk;
};

class SnapshotWriter : public SnapshotFiler {
 public:
  explicit SnapshotWriter(std::string& bytes) : bytes_(bytes) {}
  Acad::ErrorStatus writeBytes(const void* bytes, Adesk::UInt32 count) override {
    bytes_.append(static_cast<const char*>(bytes), count);
    return status_;
  }
  Acad::ErrorStatus writeString(const ACHAR* text) override {
    const std::string utf8 = toUtf8(text ? text : L"");
    writeInt32(static_cast<Adesk::Int32>(utf8.size()));
    return writeBytes(utf8.data(), static_cast<Adesk::UInt32>(utf8.size()));
  }
  Acad::ErrorStatus readBytes(void*, Adesk::UInt32) override { return Acad::eIsWriting; }
  Acad::ErrorStatus readString(ACHAR**) override { return Acad::eIsWriting; }

 protected:
  /// What is gone when the drawing is read again is null then.
  Acad::ErrorStatus writeId(const AcDbObjectId& id) override {
    return writeInt64(static_cast<Adesk::Int64>(id.isValid() && !id.isErased() ? id.handle() : 0));
  }

 private:
  std::string& bytes_;
};

class SnapshotReader : public SnapshotFiler {
 public:
  SnapshotReader(std::string_view bytes, const AcDbDatabase& drawing) : rest_(bytes), drawing_(drawing) {}
  std::string_view rest() const { return rest_; }
  /// Takes bytes without copying them; empty with a failed status when there are fewer.
  std::string_view take(size_t count) {
    if (status_ == Acad::eOk && count > rest_.size()) status_ = Acad::eEndOfFile;
    if (status_ != Acad::eOk) return {};
    const std::string_view taken = rest_.substr(0, count);
    rest_.remove_prefix(count);
    return taken;
  }
  std::wstring takeText() {
    Adesk::Int32 length = 0;
    readInt32(&length);
    return fromUtf8(take(static_cast<Adesk::UInt32>(length)));
  }
  Acad::ErrorStatus readBytes(void* bytes, Adesk::UInt32 count) override {
    std::memset(bytes, 0, count);
    const std::string_view taken = take(count);
    if (!taken.empty()) std::memcpy(bytes, taken.data(), taken.size());
    return status_;
  }
  Acad::ErrorStatus readString(ACHAR** text) override {
    acutNewString(takeText().c_str(), *text);
    return status_;
  }
  Acad::ErrorStatus writeBytes(const void*, Adesk::UInt32) override { return Acad::eIsReading; }
  Acad::ErrorStatus writeString(const ACHAR*) override { return Acad::eIsReading; }

 protected:
  /// A dangling handle is told by the answer alone: reading goes on.
  Acad::ErrorStatus readId(AcDbObjectId& id) override {
    Adesk::Int64 handle = 0;
    id.setNull();
    if (readInt64(&handle) != Acad::eOk || !handle) return status_;
    AcDbStub* const stub = drawing_.imp().find(static_cast<AcDbHandle>(handle));
    if (!stub || !stub->object) return Acad::eUnknownHandle;
    id = AcDbObjectId(stub);
    return Acad::eOk;
  }

 private:
  std::string_view rest_;
  const AcDbDatabase& drawing_;
};

}  // namespace host
