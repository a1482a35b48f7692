#pragma once

#include "platform/com/types.h"

/// The database engine object: class and interface. One object has one open database, one current table with
/// its index, one cursor and one pending error, all its own.
///
/// Rules of every method:
/// - The order of the methods is the contract.
/// - An object is called from one thread at a time.
/// - The HRESULT fails only when the call itself could not be made (a null output, no memory). A database
///   failure is `ok` false with an error that waits for `LastError`; outputs are then empty.
/// - `VARIANT_BOOL`: -1 true, 0 false. A BSTR or VARIANT that comes out belongs to the caller; what was in
///   the output before is not read. Inputs stay the caller's. A null BSTR is the empty string.
/// - A record is an array of variants: name, value, name, value, the fields in the table's order. The names
///   are shared between records: nobody writes into them.
/// - A row set is such an array with the text "*NewRecord*" before each record. Without rows it is VT_EMPTY.
/// - A definition is an array of the values of a list in order, in which the texts "*RTLB*", "*RTLE*" and
///   "*RTDOTE*" stand for its parentheses and dots. Its forms are in docs/database.md.
/// - Names are found without regard to case; a table's, column's and index's name keeps its first spelling.
///
/// The cursor stands on a row, before the first row, after the last row, or nowhere (3021 for all that needs
/// a row; without a table it is 3420). `SetTable` leaves it on the first row. When the row under the cursor
/// is deleted, by whomever, the cursor keeps the row's place: reading it answers 3167, and a move goes to its
/// old neighbours.

inline constexpr CLSID engineClassId = {
    0x4D6FDF05, 0xA48B, 0x43B0, {0xB6, 0x40, 0x64, 0xB2, 0x99, 0x54, 0x8B, 0xC4}};

struct IZbEngine : IDispatch {
  /// Opens a database; an open one is closed first. `status`: "" on failure with the error pending,
  /// "*REPAIR*" when the file opens but is damaged, else "OK".
  virtual HRESULT STDMETHODCALLTYPE Connect(BSTR path, VARIANT_BOOL reserved, VARIANT_BOOL readOnly,
                                            BSTR* status) = 0;
  /// Makes `table` current, ordered by `index`; an index may also be named by its only column. With an empty
  /// `index` a table that is current already keeps its index and its place, any other is ordered by its
  /// primary key.
  virtual HRESULT STDMETHODCALLTYPE SetTable(BSTR table, BSTR index, VARIANT_BOOL* ok) = 0;
  /// First row of the order; 3021 on an empty table.
  virtual HRESULT STDMETHODCALLTYPE MoveTop(VARIANT* record, VARIANT_BOOL* ok) = 0;
  /// Do nothing and succeed.
  virtual HRESULT STDMETHODCALLTYPE Reserved1() = 0;
  virtual HRESULT STDMETHODCALLTYPE Reserved2() = 0;
  virtual HRESULT STDMETHODCALLTYPE Reserved3() = 0;
  /// `count` rows forward, or backward when negative; 0 reads the row under the cursor. Past either end the
  /// cursor stands behind the last or before the first row, and the answer is 3021.
  virtual HRESULT STDMETHODCALLTYPE Skip(LONG count, VARIANT* record, VARIANT_BOOL* ok) = 0;
  virtual HRESULT STDMETHODCALLTYPE CurrentRecord(VARIANT* record, VARIANT_BOOL* ok) = 0;
  virtual HRESULT STDMETHODCALLTYPE IsConnected(VARIANT_BOOL* connected) = 0;
  virtual HRESULT STDMETHODCALLTYPE IsOpen(VARIANT_BOOL* open) = 0;
  /// Full path of the open database, "" if none.
  virtual HRESULT STDMETHODCALLTYPE DatabaseName(BSTR* path) = 0;
  /// Closes the table if it is open here.
  virtual HRESULT STDMETHODCALLTYPE ReleaseTable(BSTR table) = 0;
  /// True while a table is current.
  virtual HRESULT STDMETHODCALLTYPE ReservedFlag(VARIANT_BOOL* flag) = 0;
  /// Adds a row; the cursor goes to it, unless `flag` is true: then it stays where it is. Unnamed fields take
  /// their default. `record` is the row as stored.
  virtual HRESULT STDMETHODCALLTYPE Append(VARIANT fields, VARIANT_BOOL flag, VARIANT* record,
                                           VARIANT_BOOL* ok) = 0;
  /// Last row of the order; 3021 on an empty table.
  virtual HRESULT STDMETHODCALLTYPE MoveBottom(VARIANT* record, VARIANT_BOOL* ok) = 0;
  /// Note the sense: `failed` is -1 when there was no table to close.
  virtual HRESULT STDMETHODCALLTYPE CloseTable(VARIANT_BOOL* failed) = 0;
  virtual HRESULT STDMETHODCALLTYPE CloseAllTables(VARIANT_BOOL* failed) = 0;
  /// The object can connect again. `ok` is true also when nothing was open.
  virtual HRESULT STDMETHODCALLTYPE CloseDatabase(VARIANT_BOOL* ok) = 0;
  virtual HRESULT STDMETHODCALLTYPE RecordCount(LONG* count, VARIANT_BOOL* ok) = 0;
  /// Deletes the row under the cursor. The cursor keeps its place: `Skip(1)` goes to the row behind it.
  virtual HRESULT STDMETHODCALLTYPE DeleteRecord(VARIANT_BOOL* ok) = 0;
  /// The pending error, which is cleared; 0 and "" when there is none.
  virtual HRESULT STDMETHODCALLTYPE LastError(LONG* code, BSTR* text) = 0;
  virtual HRESULT STDMETHODCALLTYPE IsWritable(VARIANT_BOOL* writable) = 0;
  virtual HRESULT STDMETHODCALLTYPE ErrorPending(VARIANT_BOOL* pending) = 0;
  /// Looks for a table of the open database.
  virtual HRESULT STDMETHODCALLTYPE Exists(BSTR name, VARIANT_BOOL* exists, VARIANT_BOOL* ok) = 0;
  /// The current table's fields: name, description, name, description.
  virtual HRESULT STDMETHODCALLTYPE Structure(VARIANT* pairs, VARIANT_BOOL* ok) = 0;
  virtual HRESULT STDMETHODCALLTYPE ListIndexes(VARIANT* names, VARIANT_BOOL* ok) = 0;
  virtual HRESULT STDMETHODCALLTYPE ModifyTable(BSTR table, VARIANT definition, VARIANT_BOOL* ok) = 0;
  virtual HRESULT STDMETHODCALLTYPE RenameTable(BSTR oldName, BSTR newName, VARIANT_BOOL* ok) = 0;
  virtual HRESULT STDMETHODCALLTYPE CurrentIndexName(BSTR* name) = 0;
  virtual HRESULT STDMETHODCALLTYPE CurrentTableName(BSTR* name) = 0;
  /// Changes the named fields of the row under the cursor; the cursor stays on the row, wherever it goes in
  /// the order. `record` is the row as stored.
  virtual HRESULT STDMETHODCALLTYPE Replace(VARIANT fields, VARIANT* record, VARIANT_BOOL* ok) = 0;
  /// First row whose leading index columns equal the keys. A null or empty key finds null. Not found: 3021,
  /// and the cursor stands nowhere.
  virtual HRESULT STDMETHODCALLTYPE Seek1(VARIANT key, VARIANT* record, VARIANT_BOOL* ok) = 0;
  virtual HRESULT STDMETHODCALLTYPE Seek2(VARIANT key1, VARIANT key2, VARIANT* record, VARIANT_BOOL* ok) = 0;
  virtual HRESULT STDMETHODCALLTYPE Seek3(VARIANT key1, VARIANT key2, VARIANT key3, VARIANT* record,
                                          VARIANT_BOOL* ok) = 0;
  /// `count` 1 to 10; the keys beyond it are not read.
  virtual HRESULT STDMETHODCALLTYPE SeekN(VARIANT* key1, VARIANT* key2, VARIANT* key3, VARIANT* key4,
                                          VARIANT* key5, VARIANT* key6, VARIANT* key7, VARIANT* key8,
                                          VARIANT* key9, VARIANT* key10, LONG count, VARIANT* record,
                                          VARIANT_BOOL* ok) = 0;
  /// A new empty file; an existing one is refused (3204). Needs no open database.
  virtual HRESULT STDMETHODCALLTYPE CreateDatabase(BSTR path, VARIANT_BOOL* ok) = 0;
  virtual HRESULT STDMETHODCALLTYPE CreateTable(BSTR table, VARIANT definition, VARIANT_BOOL* ok) = 0;
  virtual HRESULT STDMETHODCALLTYPE IsReadOnly(VARIANT_BOOL* readOnly) = 0;
  /// `flag` true: a missing table is no error.
  virtual HRESULT STDMETHODCALLTYPE DeleteTable(BSTR table, VARIANT_BOOL flag, VARIANT_BOOL* ok) = 0;
  virtual HRESULT STDMETHODCALLTYPE ListTables(VARIANT* names, VARIANT_BOOL* ok) = 0;
  virtual HRESULT STDMETHODCALLTYPE ExecuteSql(BSTR sql, VARIANT* rows, VARIANT_BOOL* ok) = 0;
  virtual HRESULT STDMETHODCALLTYPE ExecuteStatement(BSTR sql, VARIANT_BOOL* ok) = 0;
  virtual HRESULT STDMETHODCALLTYPE RelationExists(BSTR name, VARIANT_BOOL* exists, VARIANT_BOOL* ok) = 0;
  /// The table on the many side, and the relation.
  virtual HRESULT STDMETHODCALLTYPE RelationDelete(BSTR first, BSTR second, VARIANT_BOOL* ok) = 0;
  /// Writes all that can be read of `source` into the new file `destination`. Needs no open database. When
  /// something had to be left out, an error that tells it is pending although `ok` is true.
  virtual HRESULT STDMETHODCALLTYPE CompactDatabase(BSTR source, BSTR destination, VARIANT_BOOL* ok) = 0;
  /// `first`: path of the other database; `second`: table there; `third`: its name here, "" for the same.
  virtual HRESULT STDMETHODCALLTYPE LinkTable(BSTR first, BSTR second, BSTR third, VARIANT_BOOL* linked,
                                              VARIANT_BOOL* ok) = 0;
  virtual HRESULT STDMETHODCALLTYPE RunQuery(BSTR name, VARIANT parameters, VARIANT* rows,
                                             VARIANT_BOOL* ok) = 0;
  /// `first`: table; `second`: columns with commas between, "DESC" behind a descending one. `flag1`: unique;
  /// `flag2`: primary.
  virtual HRESULT STDMETHODCALLTYPE CreateIndex(BSTR first, BSTR second, VARIANT_BOOL flag1,
                                                VARIANT_BOOL flag2, VARIANT_BOOL* ok) = 0;
  virtual HRESULT STDMETHODCALLTYPE CreateQuery(BSTR name, BSTR sql, VARIANT_BOOL* ok) = 0;
  /// Opens for writing, or for reading where it can't be written.
  virtual HRESULT STDMETHODCALLTYPE OpenPrivate(BSTR path, VARIANT_BOOL* readOnly, VARIANT_BOOL* ok) = 0;
  /// After the last row; before the first row. Both are true when the table is empty.
  virtual HRESULT STDMETHODCALLTYPE PositionFlagA(VARIANT_BOOL* afterLast) = 0;
  virtual HRESULT STDMETHODCALLTYPE PositionFlagB(VARIANT_BOOL* beforeFirst) = 0;
  virtual HRESULT STDMETHODCALLTYPE FieldRequired(BSTR table, BSTR field, VARIANT_BOOL* required,
                                                  VARIANT_BOOL* ok) = 0;
  virtual HRESULT STDMETHODCALLTYPE Attributes(BSTR name, VARIANT* pairs, VARIANT_BOOL* ok) = 0;
  /// Stores one field of the row under the cursor.
  virtual HRESULT STDMETHODCALLTYPE FieldValue(BSTR field, VARIANT value, VARIANT_BOOL* ok) = 0;
  virtual HRESULT STDMETHODCALLTYPE ExecuteCommand(BSTR sql, LONG* count, VARIANT_BOOL* ok) = 0;
  virtual HRESULT STDMETHODCALLTYPE EngineVersion(SHORT* version) = 0;
};

/// A second face of the engine object, for those who know when it matters that changes are on the disk. Where
/// writes flow (docs/database.md) the engine brings them there by itself within half a second.
struct IZbDurability : IUnknown {
  /// All that was answered through this object is on the disk when this returns, and in the database file
  /// itself, unless others read an older state of it. Costs nothing when there is nothing to bring.
  virtual HRESULT STDMETHODCALLTYPE Settle(VARIANT_BOOL* ok) = 0;
};

template <>
inline constexpr IID interfaceId<IZbDurability> = {
    0x8F0B41D6, 0x3C0E, 0x4B3B, {0x9A, 0x57, 0x1D, 0x62, 0xE0, 0x4C, 0x7A, 0x95}};

template <>
inline constexpr IID interfaceId<IZbEngine> = {
    0x2C4ED17D, 0x80E4, 0x4416, {0xBF, 0x2B, 0x2C, 0x8D, 0x9F, 0x11, 0x7E, 0x44}};
