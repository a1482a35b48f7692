#pragma once

#include <atomic>
#include <memory>
#include <new>
#include <optional>
#include <string>

#include "engine/catalog.h"
#include "engine/cursor.h"
#include "engine/jet_snapshot.h"
#include "interfaces/engine.h"
#include "platform/com/com_error.h"

/// The engine: what `interfaces/engine.h` says, over one database file. Made with one reference.
class EngineObject final : public IZbEngine, public IZbDurability {
 public:
  EngineObject() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(const IID& iid, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(const IID& iid, OLECHAR** names, UINT count, LCID locale,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, const IID& iid, LCID locale, WORD flags,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                   UINT* argumentError) override;

  HRESULT STDMETHODCALLTYPE Connect(BSTR path, VARIANT_BOOL reserved, VARIANT_BOOL readOnly,
                                    BSTR* status) override;
  HRESULT STDMETHODCALLTYPE SetTable(BSTR table, BSTR index, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE MoveTop(VARIANT* record, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE Reserved1() override;
  HRESULT STDMETHODCALLTYPE Reserved2() override;
  HRESULT STDMETHODCALLTYPE Reserved3() override;
  HRESULT STDMETHODCALLTYPE Skip(LONG count, VARIANT* record, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE CurrentRecord(VARIANT* record, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE IsConnected(VARIANT_BOOL* connected) override;
  HRESULT STDMETHODCALLTYPE IsOpen(VARIANT_BOOL* open) override;
  HRESULT STDMETHODCALLTYPE DatabaseName(BSTR* path) override;
  HRESULT STDMETHODCALLTYPE ReleaseTable(BSTR table) override;
  HRESULT STDMETHODCALLTYPE ReservedFlag(VARIANT_BOOL* flag) override;
  HRESULT STDMETHODCALLTYPE Append(VARIANT fields, VARIANT_BOOL flag, VARIANT* record,
                                   VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE MoveBottom(VARIANT* record, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE CloseTable(VARIANT_BOOL* failed) override;
  HRESULT STDMETHODCALLTYPE CloseAllTables(VARIANT_BOOL* failed) override;
  HRESULT STDMETHODCALLTYPE CloseDatabase(VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE RecordCount(LONG* count, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE DeleteRecord(VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE LastError(LONG* code, BSTR* text) override;
  HRESULT STDMETHODCALLTYPE IsWritable(VARIANT_BOOL* writable) override;
  HRESULT STDMETHODCALLTYPE ErrorPending(VARIANT_BOOL* pending) override;
  HRESULT STDMETHODCALLTYPE Exists(BSTR name, VARIANT_BOOL* exists, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE Structure(VARIANT* pairs, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE ListIndexes(VARIANT* names, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE ModifyTable(BSTR table, VARIANT definition, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE RenameTable(BSTR oldName, BSTR newName, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE CurrentIndexName(BSTR* name) override;
  HRESULT STDMETHODCALLTYPE CurrentTableName(BSTR* name) override;
  HRESULT STDMETHODCALLTYPE Replace(VARIANT fields, VARIANT* record, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE Seek1(VARIANT key, VARIANT* record, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE Seek2(VARIANT key1, VARIANT key2, VARIANT* record, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE Seek3(VARIANT key1, VARIANT key2, VARIANT key3, VARIANT* record,
                                  VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE SeekN(VARIANT* key1, VARIANT* key2, VARIANT* key3, VARIANT* key4, VARIANT* key5,
                                  VARIANT* key6, VARIANT* key7, VARIANT* key8, VARIANT* key9, VARIANT* key10,
                                  LONG count, VARIANT* record, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE CreateDatabase(BSTR path, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE CreateTable(BSTR table, VARIANT definition, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE IsReadOnly(VARIANT_BOOL* readOnly) override;
  HRESULT STDMETHODCALLTYPE DeleteTable(BSTR table, VARIANT_BOOL flag, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE ListTables(VARIANT* names, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE ExecuteSql(BSTR sql, VARIANT* rows, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE ExecuteStatement(BSTR sql, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE RelationExists(BSTR name, VARIANT_BOOL* exists, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE RelationDelete(BSTR first, BSTR second, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE CompactDatabase(BSTR source, BSTR destination, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE LinkTable(BSTR first, BSTR second, BSTR third, VARIANT_BOOL* linked,
                                      VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE RunQuery(BSTR name, VARIANT parameters, VARIANT* rows, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE CreateIndex(BSTR first, BSTR second, VARIANT_BOOL flag1, VARIANT_BOOL flag2,
                                        VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE CreateQuery(BSTR name, BSTR sql, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE OpenPrivate(BSTR path, VARIANT_BOOL* readOnly, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE PositionFlagA(VARIANT_BOOL* afterLast) override;
  HRESULT STDMETHODCALLTYPE PositionFlagB(VARIANT_BOOL* beforeFirst) override;
  HRESULT STDMETHODCALLTYPE FieldRequired(BSTR table, BSTR field, VARIANT_BOOL* required,
                                          VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE Attributes(BSTR name, VARIANT* pairs, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE FieldValue(BSTR field, VARIANT value, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE ExecuteCommand(BSTR sql, LONG* count, VARIANT_BOOL* ok) override;
  HRESULT STDMETHODCALLTYPE EngineVersion(SHORT* version) override;

  HRESULT STDMETHODCALLTYPE Settle(VARIANT_BOOL* ok) override;

 private:
  ~EngineObject() = default;

  /// Runs a method's work: what it fails with becomes the pending error, and `ok` false.
  template <class Work>
  HRESULT attempt(VARIANT_BOOL* ok, Work work) {
    if (!ok) return E_POINTER;
    *ok = VARIANT_FALSE;
    pending_.reset();
    try {
      work();
      *ok = VARIANT_TRUE;
    } catch (const jet::Failure& failure) {
      pending_ = failure.error;
    } catch (const ComError& error) {
      pending_ = engineError(invalidArgument, error.what());
    } catch (const std::bad_alloc&) {
      pending_ = engineError(outOfMemory);
    } catch (const std::exception& error) {
      pending_ = engineError(unexpectedFailure, error.what());
    }
    return S_OK;
  }
  /// The same for a method that gives an array out.
  template <class Work>
  HRESULT attempt(VARIANT* result, VARIANT_BOOL* ok, Work work) {
    if (!result) return E_POINTER;
    VariantInit(result);
    return attempt(ok, [&] {
      COleSafeArray array = work();
      *result = array.Detach();
    });
  }
  template <class Work>
  HRESULT moveAndRead(VARIANT* record, VARIANT_BOOL* ok, Work move) {
    return attempt(record, ok, [&] {
      Cursor& at = cursor();
      move(at);
      return at.record();
    });
  }

  Database& database();
  DatabaseCatalog& catalog();
  DatabaseCatalog& freshCatalog();
  Cursor& cursor();
  HRESULT seek(const std::vector<const VARIANT*>& keys, VARIANT* record, VARIANT_BOOL* ok);
  /// False when the file is damaged; nothing is open then.
  bool open(BSTR path, Database::Mode mode);
  bool openFile(const std::string& path, Database::Mode mode);
  /// Goes on with the file that was put in the place of the open one.
  void followReplacement();
  void closeAll();

  std::atomic<ULONG> references_ = 1;
  std::shared_ptr<const JetSnapshot> snapshot_;  ///< when a genuine Jet file is open
  std::unique_ptr<Database> database_;
  std::unique_ptr<DatabaseCatalog> catalog_;
  std::unique_ptr<Cursor> cursor_;
  std::optional<jet::Error> pending_;
};

/// A flat array of texts.
COleSafeArray arrayOfNames(const std::vector<std::string>& names);
/// Texts in turn as names and values.
COleSafeArray arrayOfPairs(const std::vector<std::pair<std::string, COleVariant>>& pairs);
