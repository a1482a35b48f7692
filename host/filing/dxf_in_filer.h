#pragma once

#include <numbers>
#include <string>
#include <vector>

#include "brx/db_filers.h"
#include "host/filing/dxf_record.h"
#include "host/filing/dxf_text.h"

namespace host {

constexpr double radiansOfDegree = std::numbers::pi / 180;
/// Codes whose values are degrees in files and radians to objects.
constexpr bool isAngle(int code) { return code >= 50 && code <= 58; }

/// Gives an object the fields of a record.
class DxfInFiler : public AcDbDxfFiler {
 public:
  /// Handles above `highest` name nothing in the file.
  DxfInFiler(AcDbDatabase& database, DxfTextDecoder& texts, FilingReport& report, AcDbHandle highest)
      : database_(database), texts_(texts), report_(report), highest_(highest) {}

  /// The record is read where it stands. Without `useMarks` it counts as one subclass.
  void begin(const DxfRecord& record, bool useMarks = true);
  /// Until the next `begin`, names (code 2) are not told.
  void hideNames() { hidesNames_ = true; }
  /// Until the next `begin`, coordinates that points lack are NaN.
  void keepPlanar() { keepsPlanar_ = true; }

  /// The object of which messages tell from now on; 0 for none.
  void tellOf(AcDbHandle handle) { handle_ = handle; }

  /// Turns `groups[index]` and, for a point, what follows it into one item; answers how many groups
  /// were used. A point that lacks coordinates has NaN for them where `keepPlanar`, else 0. Texts and
  /// bytes live until the next call.
  size_t takeItem(const std::vector<DxfGroup>& groups, size_t index, bool keepPlanar, resbuf& item);

  Acad::ErrorStatus filerStatus() const override { return status_; }
  void setError(Acad::ErrorStatus status) override { status_ = status; }
  AcDbDatabase* database() const override { return &database_; }
  Acad::ErrorStatus readItem(resbuf* item) override;
  Acad::ErrorStatus pushBackItem() override;
  bool atSubclassData(const ACHAR* subclass) override;
  Acad::ErrorStatus writeItem(const resbuf&) override { return Acad::eNotApplicable; }

 private:
  struct Section {
    std::string_view name;
    size_t first, last;  // groups of it, the mark not among them
  };
  void split();
  void rewind();
  bool continueSection();
  bool takesTextInPieces() const;
  void takeTextInPieces(resbuf& item);
  void complain(const DxfGroup& group, const wchar_t* what);

  AcDbDatabase& database_;
  DxfTextDecoder& texts_;
  FilingReport& report_;
  AcDbHandle highest_, handle_ = 0;
  const DxfRecord* record_ = nullptr;
  std::vector<Section> sections_;
  size_t section_ = 0, index_ = 0, former_ = 0;
  bool hidesNames_ = false, keepsPlanar_ = false;
  std::wstring text_;
  std::string bytes_;
  Acad::ErrorStatus status_ = Acad::eOk;
};

}  // namespace host
