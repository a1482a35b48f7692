#pragma once

#include "host/database/group_list.h"

namespace host {

/// Fields of one object between its class and a list of groups, behind those that every entity has.

class GroupWriter : public AcDbDxfFiler {
 public:
  GroupWriter(AcDbDatabase& drawing, GroupList& groups) : drawing_(drawing), groups_(groups) {}
  Acad::ErrorStatus filerStatus() const override { return status_; }
  void setError(Acad::ErrorStatus status) override { status_ = status; }
  AcDbDatabase* database() const override { return &drawing_; }
  Acad::ErrorStatus writeItem(const resbuf& item) override;
  Acad::ErrorStatus readItem(resbuf*) override { return Acad::eIsWriting; }
  Acad::ErrorStatus pushBackItem() override { return Acad::eIsWriting; }
  bool atSubclassData(const ACHAR*) override { return false; }

 private:
  AcDbDatabase& drawing_;
  GroupList& groups_;
  bool common_ = true;
  Acad::ErrorStatus status_ = Acad::eOk;
};

/// The subclass of every entity counts as there and empty.
class GroupReader : public AcDbDxfFiler {
 public:
  GroupReader(AcDbDatabase& drawing, const GroupList& groups) : drawing_(drawing), groups_(groups) {}
  Acad::ErrorStatus filerStatus() const override { return status_; }
  void setError(Acad::ErrorStatus status) override { status_ = status; }
  AcDbDatabase* database() const override { return &drawing_; }
  Acad::ErrorStatus readItem(resbuf* item) override;
  Acad::ErrorStatus pushBackItem() override;
  bool atSubclassData(const ACHAR* subclass) override;
  Acad::ErrorStatus writeItem(const resbuf&) override { return Acad::eIsReading; }

 private:
  AcDbDatabase& drawing_;
  const GroupList& groups_;
  const resbuf* next_ = nullptr;
  const resbuf* last_ = nullptr;
  Acad::ErrorStatus status_ = Acad::eOk;
};

}  // namespace host
