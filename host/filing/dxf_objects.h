#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "brx/db_database.h"
#include "host/database/stubs.h"
#include "host/filing/dxf_in_filer.h"
#include "host/filing/known_codes.h"

namespace host {

/// Makes objects of records, for all parts of a reading.
class DxfObjects {
 public:
  /// Handles above `highest` name nothing in the file.
  DxfObjects(AcDbDatabase& drawing, DxfTextDecoder& texts, FilingReport& report, AcDbHandle highest)
      : drawing_(drawing), texts_(texts), report_(report), filer_(drawing, texts, report, highest) {}

  AcDbDatabase& drawing() const { return drawing_; }
  FilingReport& report() const { return report_; }
  std::wstring text(std::string_view bytes) { return texts_.decode(bytes); }
  std::wstring text(const DxfRecord& record, int code);

  /// The class that files itself under the record's name; null for one that isn't here.
  AcRxClass* classOf(const DxfRecord& record, const AcRxClass* base);
  /// A new object with the record's fields, in no database; a proxy where the class isn't here or
  /// can't read them.
  std::unique_ptr<AcDbEntity> makeEntity(const DxfRecord& record);
  std::unique_ptr<AcDbEntity> makeEntity(const DxfRecord& record, AcRxClass* type);
  std::unique_ptr<AcDbObject> makeObject(const DxfRecord& record);
  /// Makes the linetype that a layer names, with a message, when there is none.
  void ensureLinetype(const DxfRecord& record);
  /// Gives an object that is there the record's fields. False, and a message, when it can't read them.
  bool readFields(AcDbObject& object, const DxfRecord& record);
  /// Gives a table what every object may have beside its fields.
  void readTableHead(AcDbObject& table, const DxfRecord& record) {
    readHead(table, record);
    readXdata(table, record);
  }
  /// Puts an object into the drawing under the record's handle, or another one with a message.
  AcDbObjectId add(AcDbObject* object, AcDbObjectId owner, const DxfRecord& record);
  /// Calls `visit(const resbuf&)` with the first item of the groups.
  template <class Visit>
  void withItem(const std::vector<DxfGroup>& groups, Visit visit) {
    resbuf item{};
    filer_.tellOf(0);
    filer_.takeItem(groups, 0, false, item);
    visit(item);
  }
  /// Appends groups as they stand, marks and all.
  void keepGroups(const std::vector<DxfGroup>& groups, GroupList& kept);
  void keepRecord(const DxfRecord& record, GroupList& kept);
  void complain(const DxfRecord& record, const std::wstring& what);

 private:
  Acad::ErrorStatus tryFields(AcDbObject& object, const DxfRecord& record);
  std::unique_ptr<AcDbEntity> makeProxyEntity(const DxfRecord& record);
  void ensureNames(const DxfRecord& record);
  /// Makes the record of that name, with a message, when the table lacks it.
  template <class Table, class Record>
  void ensure(std::string_view name, const DxfRecord& asking, const wchar_t* what);
  void readHead(AcDbObject& object, const DxfRecord& record);
  void readXdata(AcDbObject& object, const DxfRecord& record);

  AcDbDatabase& drawing_;
  DxfTextDecoder& texts_;
  FilingReport& report_;
  DxfInFiler filer_;
  KnownCodes known_;
  std::unordered_map<std::string, AcRxClass*> classes_;
  std::unordered_map<const void*, std::unordered_set<std::string>> names_;  // by table, known to be there
};

}  // namespace host
