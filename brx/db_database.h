#pragma once

#include <map>
#include <memory>
#include <string>

#include "brx/db_tables.h"

/// A drawing: its tables, objects and variables.

struct AcDbDatabaseImp;

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
  /// Null for a class that is no table of this drawing.
  AcDbObjectId tableId(const AcRxClass* tableClass) const;

  AcDbObjectId layerZero() const;
  AcDbObjectId clayer() const;
  Acad::ErrorStatus setClayer(AcDbObjectId layer);
  AcDbObjectId modelSpaceId() const;
  AcDbObjectId continuousLinetype() const;
  AcDbObjectId byLayerLinetype() const;
  AcDbObjectId byBlockLinetype() const;
  AcDbObjectId textstyle() const;
  double dimscale() const;
  Acad::ErrorStatus setDimscale(double scale);

  /// Takes an object without a place of its own into the database; it stays open for write.
  /// With a handle other than 0, under that handle: `eHandleInUse` when it is taken.
  Acad::ErrorStatus addAcDbObject(AcDbObjectId& id, AcDbObject* object, AcDbObjectId owner = {},
                                  AcDbHandle handle = 0);
  /// `eUnknownHandle` when nothing has it. With `createIfNotFound` an id that a later object may fill.
  Acad::ErrorStatus getAcDbObjectId(AcDbObjectId& id, bool createIfNotFound, AcDbHandle handle);
  AcDbHandle handseed() const;
  size_t objectCount() const;

  /// Ends the recording of changes to `undoMark`'s answer by taking them back.
  size_t undoMark();
  void undoTo(size_t mark);

  AcDbDatabaseImp& imp() const { return *imp_; }

 private:
  std::unique_ptr<AcDbDatabaseImp> imp_;
};

/// Database of the current document.
AcDbDatabase* acdbHostWorkingDatabase();
void acdbSetHostWorkingDatabase(AcDbDatabase* database);
