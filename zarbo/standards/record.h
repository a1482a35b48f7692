#pragma once

#include <string>
#include <vector>

#include "platform/com/owners.h"
#include "zarbo/database/engine_client.h"
#include "zarbo/standards/record_columns.h"

/// Names that tell one standards table from another. An absent index is null.
struct RecordTable {
  const wchar_t* table;
  const wchar_t* textIndex;
  const wchar_t* counterIndex;
};

/// A one-row window on a standards table: it holds the values of the current row, knows which columns
/// were changed since the row was read, and writes only those. It shares the connection and neither
/// opens nor closes the database. Without a connection a `Find...` is false, `IsFirst` and `IsEnd`
/// are true, and everything else does nothing. An engine call that answers false is no error: the
/// operation ends silently. A failing HRESULT is thrown as `ComError`.
///
/// The engine has one cursor for each connection, so the order is always: position, `Edit` or
/// `AddNew`, setters, `Update`; and two records of one connection must not be interleaved between
/// `SetIndex` and the end of a loop.
class StandardsRecord {
 public:
  virtual ~StandardsRecord() = default;
  StandardsRecord(const StandardsRecord&) = delete;
  StandardsRecord& operator=(const StandardsRecord&) = delete;

  /// Seeks on the text index; false for a table that has none.
  bool FindByKey(const std::wstring& text);
  bool FindByIndex(int32_t counter);

  /// Chooses the index that `MoveFirst` and `MoveNext` follow.
  void SetIndex(const wchar_t* index);
  /// True before the first row, and after the last one; both for a table without rows.
  bool IsFirst();
  bool IsEnd();
  void MoveFirst();
  void MoveNext();

  void AddNew();
  void Edit();
  void Delete();
  /// Writes the changed columns of a row that `AddNew` or `Edit` began, and reads the row back. With
  /// nothing changed the engine isn't called and the mode stays.
  void Update();
  void ClearChanges();
  bool adding() const { return bAdding; }
  bool editing() const { return bEditing; }

  void ReleaseTable();
  void SetFieldValue(const wchar_t* name, const COleVariant& value);
  /// Takes the columns that the array of alternating names and values knows; others are passed over.
  void LoadRecord(const VARIANT& record);

 protected:
  StandardsRecord(RecordTable table, bool leaveMasterColumns, IZbEngine* connection);

  /// The columns in the order of the row's members, and where it differs in the order of writing.
  void describe(std::vector<Column*> members, IntegerColumn& counter, std::vector<Column*> written = {});

  bool selectTable(const wchar_t* index);
  /// Takes the row when `ok`; false leaves the members alone.
  bool loadWhen(bool ok, const COleVariant& record);
  void moveTo(bool (Engine::*move)(COleVariant&));
  Engine& engine() { return connection_; }

 private:
  COleVariant changedFields() const;
  void writeChanges(const COleVariant& fields);
  bool stands(HRESULT (IZbEngine::*flag)(short*));

  Engine connection_;
  RecordTable table_;
  std::wstring tableName_;
  std::vector<Column*> members_, written_;
  IntegerColumn* counter_ = nullptr;
  bool bLeaveMasterColumns;
  bool bAdding = false;
  bool bEditing = false;
  int32_t iEditIndex = 0;
};
