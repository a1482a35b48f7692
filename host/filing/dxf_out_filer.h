#pragma once

#include <bitset>
#include <string>

#include "brx/db_filers.h"
#include "host/filing/dxf_sink.h"
#include "host/filing/wire_kind.h"

namespace host {

/// Writes the fields of an object, and among them those that its class doesn't know: a kept group goes
/// to the end of its subclass when the object has not written its code there, and kept subclasses that
/// the object doesn't have follow at the end.
class DxfOutFiler : public AcDbDxfFiler {
 public:
  DxfOutFiler(AcDbDatabase& database, DxfSink& sink) : database_(database), sink_(sink) {}

  /// `kept` is a list with subclass marks, or null: groups before its first mark go to the end of the
  /// first subclass that the object writes, and a code 0 ends it. Entities of paper space are marked.
  void begin(const resbuf* kept, bool paperSpace);
  void end();

  Acad::ErrorStatus filerStatus() const override { return status_; }
  void setError(Acad::ErrorStatus status) override { status_ = status; }
  AcDbDatabase* database() const override { return &database_; }
  Acad::ErrorStatus readItem(resbuf*) override { return Acad::eNotApplicable; }
  Acad::ErrorStatus pushBackItem() override { return Acad::eNotApplicable; }
  bool atSubclassData(const ACHAR*) override { return false; }
  Acad::ErrorStatus writeItem(const resbuf& item) override;
  Acad::ErrorStatus writePoint2d(int code, const AcGePoint2d& value) override;

 private:
  void endSection();
  void put(const resbuf& item);

  AcDbDatabase& database_;
  DxfSink& sink_;
  const resbuf* kept_ = nullptr;
  bool paperSpace_ = false;
  std::wstring section_;
  std::vector<std::wstring> written_;     // subclasses
  std::bitset<lastGroupCode + 1> codes_;  // of the subclass at hand
  Acad::ErrorStatus status_ = Acad::eOk;
};

/// Writes groups as they are.
void putGroup(const resbuf& item, DxfSink& sink);
void putGroups(const resbuf* list, DxfSink& sink);
/// Writes the groups in braces with which a kept list begins; the filer doesn't.
void putBraces(const resbuf* kept, DxfSink& sink);

/// Degrees for radians: the shortest number that turns back into the same radians.
double degreesOf(double radians);

}  // namespace host
