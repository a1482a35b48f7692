#pragma once

#include <string>
#include <vector>

#include "brx/db_filers.h"
#include "host/lisp/value.h"

namespace host {

/// One group of an association list; the value stays the list's.
struct ListGroup {
  int code;
  const lisp::Value* value;
};
using ListGroups = std::vector<ListGroup>;

/// The groups of a list as LISP makes them. Throws LispError "bad DXF group: …" for an element that is no
/// group, or whose value isn't of the kind that its code tells. Integers stand for reals too.
ListGroups groupsOf(const lisp::Value& list);
/// Null when the list lacks the code.
const lisp::Value* findGroup(const ListGroups& groups, int code);
/// The integer of the code; `missing` without one.
int integerGroup(const ListGroups& groups, int code, int missing);
/// The text of the code; "" without one.
std::wstring textGroup(const ListGroups& groups, int code);
/// The value of a group as a buffer; texts stay the value's. Bytes are put into `bytes`.
resbuf bufferOf(const ListGroup& group, std::string& bytes);

/// Codes of what every entity has.
constexpr bool isEntityCode(int code) {
  switch (code) {
    case 6:
    case 8:
    case 48:
    case 60:
    case 62:
    case 370:
    case 420:
    case 430:
    case 440:
      return true;
    default:
      return false;
  }
}

/// Codes of the object itself: names, type, handle, extended data.
constexpr bool isIdentity(int code) { return code <= 0 || code == 5 || code == 105 || code >= 1000; }

/// Gives objects the groups of a list. Lists of LISP are laxer than files: what all entities have may stand
/// anywhere, parts of a subclass may lie apart, and a list that lacks a subclass's mark is read as a whole.
class ListReader : public AcDbDxfFiler {
 public:
  /// The groups and their values must outlive the reader.
  ListReader(AcDbDatabase& drawing, const ListGroups& groups);
  Acad::ErrorStatus filerStatus() const override { return status_; }
  void setError(Acad::ErrorStatus status) override { status_ = status; }
  AcDbDatabase* database() const override { return &drawing_; }
  Acad::ErrorStatus readItem(resbuf* item) override;
  Acad::ErrorStatus pushBackItem() override;
  bool atSubclassData(const ACHAR* subclass) override;
  Acad::ErrorStatus writeItem(const resbuf&) override { return Acad::eIsReading; }

 private:
  void takeEntityData();
  void takeSubclass(std::wstring_view subclass);
  void takeAll();

  AcDbDatabase& drawing_;
  const ListGroups& groups_;
  size_t firstMark_;
  /// The places of the groups that are being read.
  std::vector<size_t> places_;
  size_t next_ = 0;
  std::string bytes_;
  Acad::ErrorStatus status_ = Acad::eOk;
};

}  // namespace host
