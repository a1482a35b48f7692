#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "brx/db_curves.h"

/// Symbol tables and their records. Names are compared without regard to case.

class AcDbSymbolTableIterator;
class AcDbSortentsTable;
namespace host {
class GroupList;
}

class BRX_API AcDbSymbolTableRecord : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbSymbolTableRecord)
  std::wstring getName() const { return name_; }
  Acad::ErrorStatus getName(const ACHAR*& name) const { return name = name_.c_str(), Acad::eOk; }
  /// `eInvalidInput` for an empty name, one above 255 characters, or one with any of <>/\":;?,*=`| (a
  /// star may lead the host's own names of blocks and viewports) or with a control character;
  /// `eDuplicateKey` when the table has another record of the name.
  Acad::ErrorStatus setName(const ACHAR* name);
  BRX_FILES_ITSELF

 private:
  friend struct HostAccess;
  std::wstring name_;
  Adesk::Int16 flags_ = 0;

 protected:
  Adesk::Int16 flags() const { return flags_; }
  /// The fields that files have among those of each class.
  template <class Visitor, class Self>
  static void head(Visitor& v, Self& o);
  void setFlag(Adesk::Int16 bit, bool on) {
    flags_ = static_cast<Adesk::Int16>(on ? flags_ | bit : flags_ & ~bit);
  }
};

class BRX_API AcDbSymbolTable : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbSymbolTable)
  /// `eKeyNotFound`; a record that is erased counts only with `getErased`, otherwise `eWasErased`.
  Acad::ErrorStatus getAt(const ACHAR* name, AcDbObjectId& id, bool getErased = false) const;
  template <class T>
  Acad::ErrorStatus getAt(const ACHAR* name, T*& record, AcDb::OpenMode mode, bool openErased = false) const {
    AcDbObjectId id;
    const Acad::ErrorStatus status = getAt(name, id, openErased);
    return status == Acad::eOk ? acdbOpenObject(record, id, mode, openErased) : status;
  }
  bool has(const ACHAR* name) const;
  /// The table's database owns the record afterwards; it stays open for write.
  Acad::ErrorStatus add(AcDbObjectId& id, AcDbSymbolTableRecord* record);
  Acad::ErrorStatus add(AcDbSymbolTableRecord* record);
  /// The caller deletes the iterator.
  Acad::ErrorStatus newIterator(AcDbSymbolTableIterator*& iterator, bool atBeginning = true,
                                bool skipDeleted = true) const;
  /// In the order of adding, the erased ones among them.
  const std::vector<AcDbObjectId>& recordIds() const { return order_; }

 private:
  friend struct HostAccess;
  std::map<std::wstring, AcDbObjectId, std::less<>> byName_;
  std::vector<AcDbObjectId> order_;
};

/// Walks the records of a table; valid while the table lives.
class BRX_API AcDbSymbolTableIterator {
 public:
  AcDbSymbolTableIterator(const AcDbSymbolTable& table, bool atBeginning, bool skipDeleted);
  void start(bool atBeginning = true, bool skipDeleted = true);
  bool done() const { return index_ >= table_.recordIds().size(); }
  void step(bool forward = true, bool skipDeleted = true);
  Acad::ErrorStatus getRecordId(AcDbObjectId& id) const;
  template <class T>
  Acad::ErrorStatus getRecord(T*& record, AcDb::OpenMode mode = AcDb::kForRead,
                              bool openErased = false) const {
    AcDbObjectId id;
    const Acad::ErrorStatus status = getRecordId(id);
    return status == Acad::eOk ? acdbOpenObject(record, id, mode, openErased) : status;
  }

 private:
  const AcDbSymbolTable& table_;
  size_t index_ = 0;
};

#define BRX_SYMBOL_TABLE(Name)                  \
  class BRX_API Name : public AcDbSymbolTable { \
   public:                                      \
    ACRX_DECLARE_MEMBERS(Name)                  \
  };
BRX_SYMBOL_TABLE(AcDbBlockTable)
BRX_SYMBOL_TABLE(AcDbLayerTable)
BRX_SYMBOL_TABLE(AcDbLinetypeTable)
BRX_SYMBOL_TABLE(AcDbTextStyleTable)
BRX_SYMBOL_TABLE(AcDbRegAppTable)
BRX_SYMBOL_TABLE(AcDbDimStyleTable)
BRX_SYMBOL_TABLE(AcDbViewTable)
BRX_SYMBOL_TABLE(AcDbUCSTable)
BRX_SYMBOL_TABLE(AcDbViewportTable)
#undef BRX_SYMBOL_TABLE

class BRX_API AcDbLayerTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbLayerTableRecord)
  bool isFrozen() const { return flags() & 1; }
  Acad::ErrorStatus setIsFrozen(bool frozen);
  bool isLocked() const { return flags() & 4; }
  void setIsLocked(bool locked);
  bool isOff() const { return off_; }
  void setIsOff(bool off);
  AcCmColor color() const { return color_; }
  void setColor(const AcCmColor& color);
  AcDbObjectId linetypeObjectId() const { return linetype_; }
  void setLinetypeObjectId(AcDbObjectId linetype);
  /// Hundredths of a millimetre, or -3 for the default.
  int lineWeight() const { return lineWeight_; }
  /// `eInvalidInput` for a weight that the host doesn't have.
  Acad::ErrorStatus setLineWeight(int weight);
  bool isPlottable() const { return plottable_; }
  Acad::ErrorStatus setIsPlottable(bool plottable);
  std::wstring plotStyleName() const;
  AcDbObjectId plotStyleNameId() const { return plotStyle_; }
  /// `eNotInDatabase` outside a database, `eNotApplicable` in a drawing whose plot styles go by
  /// colour, `eKeyNotFound` for a style that the drawing doesn't have.
  Acad::ErrorStatus setPlotStyleName(const ACHAR* name);
  Acad::ErrorStatus setPlotStyleName(AcDbObjectId style);
  std::wstring description() const { return description_; }
  Acad::ErrorStatus setDescription(const ACHAR* text);
  BRX_FILES_ITSELF

 private:
  BRX_DECLARES_FIELDS
  AcCmColor color_ = [] {
    AcCmColor c;
    c.setColorIndex(7);
    return c;
  }();
  AcDbObjectId linetype_, plotStyle_;
  std::wstring description_;
  Adesk::Int16 lineWeight_ = -3;
  bool off_ = false, plottable_ = true;
};

/// A text or a shape at the end of a dash, as drawing files have it. The offset is in drawing units, the
/// rotation in radians against the line or, by its flag, against the X axis.
struct BrxDashSign {
  enum : Adesk::Int16 { isUpright = 1, isText = 2, isShape = 4 };
  Adesk::Int16 dash = 0, flags = 0, shape = 0;
  AcDbObjectId style;  // of a shape's file, or of the text
  double scale = 1, rotation = 0, offsetX = 0, offsetY = 0;
  std::wstring text;
};

class BRX_API AcDbLinetypeTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbLinetypeTableRecord)
  std::wstring comments() const { return comments_; }
  /// Lengths in drawing units: above 0 a dash, below a gap, 0 a dot. Empty for a continuous line.
  const std::vector<double>& dashes() const { return dashes_; }
  /// In the order of the dashes; most have none.
  const std::vector<BrxDashSign>& signs() const { return signs_; }
  /// Without signs.
  void setPattern(std::wstring comments, std::vector<double> dashes);
  double patternLength() const;
  BRX_FILES_ITSELF

 private:
  BRX_DECLARES_FIELDS
  std::wstring comments_;
  std::vector<double> dashes_;
  std::vector<BrxDashSign> signs_;
};

class BRX_API AcDbTextStyleTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbTextStyleTableRecord)
  double textSize() const { return textSize_; }
  double xScale() const { return xScale_; }
  double obliquingAngle() const { return oblique_; }
  std::wstring fileName() const { return fileName_; }
  std::wstring bigFontFileName() const { return bigFontFileName_; }
  /// A style of height 0 asks for the height of each text.
  Acad::ErrorStatus setTextSize(double size);
  Acad::ErrorStatus setXScale(double scale);
  Acad::ErrorStatus setObliquingAngle(double angle);
  Acad::ErrorStatus setFileName(const ACHAR* file);
  Acad::ErrorStatus setBigFontFileName(const ACHAR* file);
  BRX_FILES_ITSELF

 private:
  BRX_DECLARES_FIELDS
  double textSize_ = 0, xScale_ = 1, oblique_ = 0, priorSize_ = 0.2;
  std::wstring fileName_ = L"txt", bigFontFileName_;
  Adesk::Int16 generation_ = 0;  // backward and upside down
};

class BRX_API AcDbRegAppTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbRegAppTableRecord)
  BRX_FILES_ITSELF

 private:
  BRX_DECLARES_FIELDS
};

/// A record whose data behind the name are kept as groups of the drawing file.
class BRX_API BrxGroupsTableRecord : public AcDbSymbolTableRecord {
 public:
  ~BrxGroupsTableRecord() override;
  const host::GroupList& groups() const { return *groups_; }
  void setGroups(host::GroupList groups);
  BRX_FILES_ITSELF

 protected:
  BrxGroupsTableRecord();

 private:
  BRX_DECLARES_FIELDS
  std::unique_ptr<host::GroupList> groups_;
};
#define BRX_GROUPS_RECORD(Name)                      \
  class BRX_API Name : public BrxGroupsTableRecord { \
   public:                                           \
    ACRX_DECLARE_MEMBERS(Name)                       \
  };
BRX_GROUPS_RECORD(AcDbDimStyleTableRecord)
BRX_GROUPS_RECORD(AcDbViewTableRecord)
BRX_GROUPS_RECORD(AcDbUCSTableRecord)
BRX_GROUPS_RECORD(AcDbViewportTableRecord)
#undef BRX_GROUPS_RECORD

class AcDbBlockTableRecordIterator;

class BRX_API AcDbBlockTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbBlockTableRecord)
  AcGePoint3d origin() const { return origin_; }
  Acad::ErrorStatus setOrigin(const AcGePoint3d& origin);
  bool isAnonymous() const { return flags() & 1; }
  bool isLayout() const;
  AcDbObjectId getLayoutId() const { return layout_; }
  Acad::ErrorStatus setLayoutId(AcDbObjectId layout);
  bool hasAttributeDefinitions() const;
  bool isFromExternalReference() const { return flags() & 4; }
  std::wstring pathName() const { return path_; }
  std::wstring comments() const { return comments_; }
  Acad::ErrorStatus setComments(const ACHAR* text);
  /// The table of draw order, kept in the extension dictionary. Without one it is made with
  /// `createIfNecessary`, otherwise `eKeyNotFound`.
  Acad::ErrorStatus getSortentsTable(AcDbSortentsTable*& table, AcDb::OpenMode mode = AcDb::kForRead,
                                     bool createIfNecessary = false);
  /// The record owns the entity afterwards; it stays open for write. `eSelfReference` for a block
  /// reference that leads back to this record.
  Acad::ErrorStatus appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity);
  Acad::ErrorStatus appendAcDbEntity(AcDbEntity* entity);
  /// The caller deletes the iterator.
  Acad::ErrorStatus newIterator(AcDbBlockTableRecordIterator*& iterator, bool atBeginning = true,
                                bool skipDeleted = true) const;
  /// In the order of appending, the erased ones among them.
  const std::vector<AcDbObjectId>& entityIds() const { return entities_; }
  BRX_FILES_ITSELF

 private:
  friend struct HostAccess;
  BRX_DECLARES_FIELDS
  AcGePoint3d origin_;
  AcDbObjectId layout_;
  std::wstring path_, comments_;
  Adesk::Int16 units_ = 0, explodable_ = 1, scaling_ = 0;
  std::vector<AcDbObjectId> entities_;
};

/// Walks the entities of a record; valid while the record lives.
class BRX_API AcDbBlockTableRecordIterator {
 public:
  AcDbBlockTableRecordIterator(const AcDbBlockTableRecord& record, bool skipDeleted);
  void start(bool atBeginning = true, bool skipDeleted = true);
  bool done() const { return index_ >= record_.entityIds().size(); }
  void step(bool forward = true, bool skipDeleted = true);
  Acad::ErrorStatus getEntityId(AcDbObjectId& id) const;
  Acad::ErrorStatus getEntity(AcDbEntity*& entity, AcDb::OpenMode mode = AcDb::kForRead,
                              bool openErased = false) const;

 private:
  const AcDbBlockTableRecord& record_;
  size_t index_ = 0;
};

inline constexpr const ACHAR* ACDB_MODEL_SPACE = L"*Model_Space";
inline constexpr const ACHAR* ACDB_PAPER_SPACE = L"*Paper_Space";
