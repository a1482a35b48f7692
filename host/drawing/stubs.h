#pragma once

#include <deque>
#include <memory>
#include <unordered_map>
#include <vector>

#include "brx/db_database.h"

/// What stands behind an id: made once for each handle, kept as long as the database.
struct AcDbStub {
  AcDbObject* object = nullptr;  // owned; null until an object comes for a handle that was referred to
  AcDbHandle handle = 0;
  AcDbDatabase* database = nullptr;
  AcDbStub* owner = nullptr;
  Adesk::UInt16 readers = 0;
  Adesk::UInt32 position = 0;  // among the entities of its block
  bool writing = false, erased = false;
  bool recorded = false;  // the state before this opening stands in the undo journal
};

/// Rarely present data of an object.
struct AcDbObjectExtras {
  resbuf* xdata = nullptr;
  AcDbObjectId extensionDictionary;
};

/// One change that can be taken back. `before` is empty for a change of the erased flag alone.
struct UndoRecord {
  AcDbStub* stub;
  bool wasErased;
  std::vector<unsigned char> before;
};

struct AcDbDatabaseImp {
  static constexpr AcDbHandle pageSize = 1024;
  std::deque<AcDbStub> stubs;
  /// Handles come in runs, so that pages of neighbours cost one pointer for each.
  std::unordered_map<AcDbHandle, std::unique_ptr<AcDbStub*[]>> pages;
  AcDbHandle nextHandle = 1;
  std::map<const AcRxClass*, AcDbStub*> tables;
  AcDbObjectId layerZero, clayer, modelSpace, continuous, byLayer, byBlock, textstyle;
  double dimscale = 1;
  bool undoing = false;
  size_t openMarks = 0;
  std::vector<UndoRecord> journal;

  AcDbStub*& slot(AcDbHandle handle);
  AcDbStub* find(AcDbHandle handle) const;
  AcDbStub& make(AcDbDatabase& database, AcDbHandle handle);
};

/// The host's way to what objects keep private.
struct HostAccess {
  static AcDbStub*& stub(AcDbObject& object) { return object.stub_; }
  static AcDbObjectExtras*& extras(AcDbObject& object) { return object.extras_; }
  static AcDbObjectExtras* extras(const AcDbObject& object) { return object.extras_; }
  static void addEntity(AcDbBlockTableRecord& record, AcDbObjectId id) {
    id.stub()->position = static_cast<Adesk::UInt32>(record.entities_.size());
    record.entities_.push_back(id);
  }
  static void addRecord(AcDbSymbolTable& table, const std::wstring& key, AcDbObjectId id) {
    table.byName_[key] = id;
    table.order_.push_back(id);
  }
  static void rename(AcDbSymbolTable& table, const std::wstring& from, const std::wstring& to,
                     AcDbObjectId id) {
    table.byName_.erase(from);
    table.byName_[to] = id;
  }
  static void line(auto& v, auto& o) {
    v(39, o.thickness_), v(10, o.start_), v(11, o.end_), v(210, o.normal_);
  }
  static void point(auto& v, auto& o) { v(10, o.position_); }
  /// Angles have their place behind the circle's subclass, which files have between.
  static void circle(auto& v, auto& o) {
    v.plane(10, o.centre_, o.normal_), v(40, o.radius_), v(210, o.normal_);
  }
  static void arc(auto& v, auto& o) { v(50, o.startAngle_), v(51, o.endAngle_); }
  static void text(auto& v, auto& o) {
    v.plane(10, o.position_, o.normal_), v(40, o.height_), v(1, o.text_), v(50, o.rotation_);
    v(41, o.widthFactor_), v(51, o.oblique_), v.template named<AcDbTextStyleTable>(7, o.style_);
    v(71, o.generation_), v(72, o.horizontal_), v.plane(11, o.alignment_, o.normal_), v(210, o.normal_);
  }
  /// Has its place behind a second subclass mark.
  static void textVertical(auto& v, auto& o) { v(73, o.vertical_); }
  static void mtext(auto& v, auto& o) {
    v(10, o.location_), v(40, o.textHeight_), v(41, o.width_), v(71, o.attachment_), v(1, o.contents_);
    v.template named<AcDbTextStyleTable>(7, o.style_), v(210, o.normal_), v(11, o.direction_), v(72, o.flow_),
        v(73, o.spacingStyle_), v(44, o.lineSpacing_), v(90, o.background_), v(45, o.backgroundScale_);
  }
  static void insert(auto& v, auto& o) {
    v.template named<AcDbBlockTable>(2, o.record_), v.plane(10, o.position_, o.normal_), v(41, o.scale_.sx);
    v(42, o.scale_.sy), v(43, o.scale_.sz), v(50, o.rotation_), v(210, o.normal_);
  }
  static const auto& names(const AcDbSymbolTable& table) { return table.byName_; }
};

namespace host {

/// Registers the host's database classes once.
void registerDatabaseClasses();
/// The form of a symbol name under which tables keep it.
std::wstring symbolKey(const ACHAR* name);

}  // namespace host
