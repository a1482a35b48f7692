#pragma once

#include <map>
#include <memory>
#include <string>

#include "brx/db_tables.h"

/// A drawing: its tables, objects and variables.

struct AcDbDatabaseImp;
class AcDbDictionary;
class AcDbTransactionManager;

class BRX_API AcDbDatabase : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbDatabase)
  enum OpenMode { kForReadAndReadShare = 1, kForReadAndWriteShare = 2, kForReadAndAllShare = 3 };
  /// Without `buildDefaultDrawing` the tables are empty, for a file to fill.
  explicit AcDbDatabase(bool buildDefaultDrawing = true, bool noDocument = false);
  ~AcDbDatabase() override;
  AcDbDatabase(const AcDbDatabase&) = delete;

  template <class Table>
  Acad::ErrorStatus getSymbolTable(Table*& table, AcDb::OpenMode mode = AcDb::kForRead) {
    return acdbOpenObject(table, tableId(Table::desc()), mode);
  }
  Acad::ErrorStatus getBlockTable(AcDbBlockTable*& t, AcDb::OpenMode m = AcDb::kForRead) {
    return getSymbolTable(t, m);
  }
  Acad::ErrorStatus getLayerTable(AcDbLayerTable*& t, AcDb::OpenMode m = AcDb::kForRead) {
    return getSymbolTable(t, m);
  }
  Acad::ErrorStatus getLinetypeTable(AcDbLinetypeTable*& t, AcDb::OpenMode m = AcDb::kForRead) {
    return getSymbolTable(t, m);
  }
  Acad::ErrorStatus getTextStyleTable(AcDbTextStyleTable*& t, AcDb::OpenMode m = AcDb::kForRead) {
    return getSymbolTable(t, m);
  }
  Acad::ErrorStatus getRegAppTable(AcDbRegAppTable*& t, AcDb::OpenMode m = AcDb::kForRead) {
    return getSymbolTable(t, m);
  }
  Acad::ErrorStatus getDimStyleTable(AcDbDimStyleTable*& t, AcDb::OpenMode m = AcDb::kForRead) {
    return getSymbolTable(t, m);
  }
  AcDbObjectId layerTableId() const { return tableId(AcDbLayerTable::desc()); }
  AcDbObjectId blockTableId() const { return tableId(AcDbBlockTable::desc()); }
  AcDbObjectId linetypeTableId() const { return tableId(AcDbLinetypeTable::desc()); }
  AcDbObjectId textStyleTableId() const { return tableId(AcDbTextStyleTable::desc()); }
  AcDbObjectId regAppTableId() const { return tableId(AcDbRegAppTable::desc()); }
  AcDbObjectId dimStyleTableId() const { return tableId(AcDbDimStyleTable::desc()); }
  /// Null for a class that is no table of this drawing.
  AcDbObjectId tableId(const AcRxClass* tableClass) const;

  AcDbObjectId layerZero() const;
  AcDbObjectId clayer() const;
  Acad::ErrorStatus setClayer(AcDbObjectId layer);
  AcDbObjectId dimstyle() const;
  AcDbObjectId modelSpaceId() const;
  AcDbObjectId paperSpaceId() const;
  AcDbObjectId namedObjectsDictionaryId() const;
  AcDbObjectId groupDictionaryId() const { return dictionaryId(L"ACAD_GROUP"); }
  AcDbObjectId layoutDictionaryId() const { return dictionaryId(L"ACAD_LAYOUT"); }
  AcDbObjectId plotStyleNameDictionaryId() const { return dictionaryId(L"ACAD_PLOTSTYLENAME"); }
  Acad::ErrorStatus getNamedObjectsDictionary(AcDbDictionary*& d, AcDb::OpenMode m = AcDb::kForRead);
  /// `eKeyNotFound` in a drawing that has no such dictionary.
  Acad::ErrorStatus getGroupDictionary(AcDbDictionary*& d, AcDb::OpenMode m = AcDb::kForRead);
  Acad::ErrorStatus getLayoutDictionary(AcDbDictionary*& d, AcDb::OpenMode m = AcDb::kForRead);
  Acad::ErrorStatus getPlotStyleNameDictionary(AcDbDictionary*& d, AcDb::OpenMode m = AcDb::kForRead);
  AcDbObjectId continuousLinetype() const;
  AcDbObjectId byLayerLinetype() const;
  AcDbObjectId byBlockLinetype() const;
  AcDbObjectId textstyle() const;
  double dimscale() const;
  /// `eInvalidInput` below 0.
  Acad::ErrorStatus setDimscale(double scale);
  Acad::ErrorStatus setTextstyle(AcDbObjectId style);
  AcDbObjectId celtype() const;
  Acad::ErrorStatus setCeltype(AcDbObjectId linetype);
  AcCmColor cecolor() const;
  double celtscale() const;
  double ltscale() const;
  Acad::ErrorStatus setLtscale(double scale);
  AcGePoint3d insbase() const;
  /// Extents of model space as they are now; an empty drawing gives 1e20 and -1e20.
  AcGePoint3d extmin() const;
  AcGePoint3d extmax() const;
  /// Brings the stored extents up to date with model space.
  Acad::ErrorStatus updateExt(bool exact = false);
  /// Plot styles by colour (true) or by name.
  bool plotStyleMode() const;

  /// Takes an object without a place of its own into the database; it stays open for write.
  /// With a handle other than 0, under that handle: `eHandleInUse` when it is taken.
  Acad::ErrorStatus addAcDbObject(AcDbObjectId& id, AcDbObject* object, AcDbObjectId owner = {},
                                  AcDbHandle handle = 0);
  /// `eUnknownHandle` when nothing has it. With `createIfNotFound` an id that a later object may fill.
  Acad::ErrorStatus getAcDbObjectId(AcDbObjectId& id, bool createIfNotFound, AcDbHandle handle);
  AcDbHandle handseed() const;
  size_t objectCount() const;

  /// Reads a drawing file into this database, which must be empty (made without a default drawing or
  /// not changed since); `eFileNotFound`, `eNotImplementedYet` for a kind of file that can't be read.
  Acad::ErrorStatus readDwgFile(const ACHAR* path, int shareMode = kForReadAndReadShare);
  Acad::ErrorStatus saveAs(const ACHAR* path);
  /// File from which it was read or into which it was saved last; empty without one.
  std::wstring getFilename() const;

  /// Copies the model space of another drawing into the block `name`, which is made or redefined, with
  /// the layers, linetypes, styles, blocks that it uses: those whose names this drawing has stay as
  /// they are here.
  Acad::ErrorStatus insert(AcDbObjectId& block, const ACHAR* name, AcDbDatabase* from,
                           bool preserveSourceDatabase = true);
  /// Copies objects of this drawing to another owner (block record or dictionary) in it; `copies`
  /// receives them in order.
  Acad::ErrorStatus deepCloneObjects(const AcDbObjectIdArray& ids, AcDbObjectId owner,
                                     AcDbObjectIdArray& copies);
  /// A new drawing, the caller's, with the contents of a block of this one in model space.
  Acad::ErrorStatus wblock(AcDbDatabase*& made, AcDbObjectId block);

  AcDbTransactionManager* transactionManager() const;

  /// Changes behind a mark are recorded until it is ended by `undoTo`, which takes them back, or
  /// `undoKeep`. Marks nest; the answer names the mark.
  size_t undoMark();
  void undoTo(size_t mark);
  void undoKeep(size_t mark);

  AcDbDatabaseImp& imp() const { return *imp_; }

 private:
  AcDbObjectId dictionaryId(const ACHAR* name) const;
  std::unique_ptr<AcDbDatabaseImp> imp_;
};

/// Database of the current document.
AcDbDatabase* acdbHostWorkingDatabase();
void acdbSetHostWorkingDatabase(AcDbDatabase* database);
