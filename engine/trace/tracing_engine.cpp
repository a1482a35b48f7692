#include "engine/trace/tracing_engine.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <vector>

#include "platform/com/call_trace.h"

namespace {

COleVariant argument(BSTR text) { return COleVariant(viewOf(text)); }
COleVariant argument(VARIANT_BOOL flag) { return COleVariant::boolean(flag != VARIANT_FALSE); }
COleVariant argument(LONG number) { return COleVariant(number); }
// A list of fields or of a definition is not a plain argument: it shows as nothing.
COleVariant argument(const VARIANT& value) {
  return (value.vt & VT_ARRAY) ? COleVariant() : COleVariant(value);
}

/// Hands every call on. The order of the methods is that of the interface.
class TracingEngine final : public IZbEngine {
 public:
  explicit TracingEngine(ComPtr<IZbEngine> engine) : engine_(std::move(engine)) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(const IID& iid, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (iid == interfaceId<IZbDurability>) return engine_->QueryInterface(iid, object);  // not traced
    if (!(iid == interfaceId<IUnknown> || iid == interfaceId<IDispatch> || iid == interfaceId<IZbEngine>)) {
      return E_NOINTERFACE;
    }
    *object = static_cast<IZbEngine*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    return engine_->GetTypeInfoCount(count);
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
    return engine_->GetTypeInfo(index, locale, info);
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(const IID& iid, OLECHAR** names, UINT count, LCID locale,
                                          DISPID* ids) override {
    return engine_->GetIDsOfNames(iid, names, count, locale, ids);
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, const IID& iid, LCID locale, WORD flags,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                   UINT* argumentError) override {
    return engine_->Invoke(member, iid, locale, flags, parameters, result, exception, argumentError);
  }

  HRESULT STDMETHODCALLTYPE Connect(BSTR path, VARIANT_BOOL reserved, VARIANT_BOOL readOnly,
                                    BSTR* status) override {
    note(L"Connect", path, reserved, readOnly);
    return engine_->Connect(path, reserved, readOnly, status);
  }
  HRESULT STDMETHODCALLTYPE SetTable(BSTR table, BSTR index, VARIANT_BOOL* ok) override {
    note(L"SetTable", table, index);
    return engine_->SetTable(table, index, ok);
  }
  HRESULT STDMETHODCALLTYPE MoveTop(VARIANT* record, VARIANT_BOOL* ok) override {
    note(L"MoveTop");
    return engine_->MoveTop(record, ok);
  }
  HRESULT STDMETHODCALLTYPE Reserved1() override {
    note(L"Reserved1");
    return engine_->Reserved1();
  }
  HRESULT STDMETHODCALLTYPE Reserved2() override {
    note(L"Reserved2");
    return engine_->Reserved2();
  }
  HRESULT STDMETHODCALLTYPE Reserved3() override {
    note(L"Reserved3");
    return engine_->Reserved3();
  }
  HRESULT STDMETHODCALLTYPE Skip(LONG count, VARIANT* record, VARIANT_BOOL* ok) override {
    note(L"Skip", count);
    return engine_->Skip(count, record, ok);
  }
  HRESULT STDMETHODCALLTYPE CurrentRecord(VARIANT* record, VARIANT_BOOL* ok) override {
    note(L"CurrentRecord");
    return engine_->CurrentRecord(record, ok);
  }
  HRESULT STDMETHODCALLTYPE IsConnected(VARIANT_BOOL* connected) override {
    note(L"IsConnected");
    return engine_->IsConnected(connected);
  }
  HRESULT STDMETHODCALLTYPE IsOpen(VARIANT_BOOL* open) override {
    note(L"IsOpen");
    return engine_->IsOpen(open);
  }
  HRESULT STDMETHODCALLTYPE DatabaseName(BSTR* path) override {
    note(L"DatabaseName");
    return engine_->DatabaseName(path);
  }
  HRESULT STDMETHODCALLTYPE ReleaseTable(BSTR table) override {
    note(L"ReleaseTable", table);
    return engine_->ReleaseTable(table);
  }
  HRESULT STDMETHODCALLTYPE ReservedFlag(VARIANT_BOOL* flag) override {
    note(L"ReservedFlag");
    return engine_->ReservedFlag(flag);
  }
  HRESULT STDMETHODCALLTYPE Append(VARIANT fields, VARIANT_BOOL flag, VARIANT* record,
                                   VARIANT_BOOL* ok) override {
    note(L"Append", fields, flag);
    return engine_->Append(fields, flag, record, ok);
  }
  HRESULT STDMETHODCALLTYPE MoveBottom(VARIANT* record, VARIANT_BOOL* ok) override {
    note(L"MoveBottom");
    return engine_->MoveBottom(record, ok);
  }
  HRESULT STDMETHODCALLTYPE CloseTable(VARIANT_BOOL* failed) override {
    note(L"CloseTable");
    return engine_->CloseTable(failed);
  }
  HRESULT STDMETHODCALLTYPE CloseAllTables(VARIANT_BOOL* failed) override {
    note(L"CloseAllTables");
    return engine_->CloseAllTables(failed);
  }
  HRESULT STDMETHODCALLTYPE CloseDatabase(VARIANT_BOOL* ok) override {
    note(L"CloseDatabase");
    return engine_->CloseDatabase(ok);
  }
  HRESULT STDMETHODCALLTYPE RecordCount(LONG* count, VARIANT_BOOL* ok) override {
    note(L"RecordCount");
    return engine_->RecordCount(count, ok);
  }
  HRESULT STDMETHODCALLTYPE DeleteRecord(VARIANT_BOOL* ok) override {
    note(L"DeleteRecord");
    return engine_->DeleteRecord(ok);
  }
  HRESULT STDMETHODCALLTYPE LastError(LONG* code, BSTR* text) override {
    note(L"LastError");
    return engine_->LastError(code, text);
  }
  HRESULT STDMETHODCALLTYPE IsWritable(VARIANT_BOOL* writable) override {
    note(L"IsWritable");
    return engine_->IsWritable(writable);
  }
  HRESULT STDMETHODCALLTYPE ErrorPending(VARIANT_BOOL* pending) override {
    note(L"ErrorPending");
    return engine_->ErrorPending(pending);
  }
  HRESULT STDMETHODCALLTYPE Exists(BSTR name, VARIANT_BOOL* exists, VARIANT_BOOL* ok) override {
    note(L"Exists", name);
    return engine_->Exists(name, exists, ok);
  }
  HRESULT STDMETHODCALLTYPE Structure(VARIANT* pairs, VARIANT_BOOL* ok) override {
    note(L"Structure");
    return engine_->Structure(pairs, ok);
  }
  HRESULT STDMETHODCALLTYPE ListIndexes(VARIANT* names, VARIANT_BOOL* ok) override {
    note(L"ListIndexes");
    return engine_->ListIndexes(names, ok);
  }
  HRESULT STDMETHODCALLTYPE ModifyTable(BSTR table, VARIANT definition, VARIANT_BOOL* ok) override {
    note(L"ModifyTable", table, definition);
    return engine_->ModifyTable(table, definition, ok);
  }
  HRESULT STDMETHODCALLTYPE RenameTable(BSTR oldName, BSTR newName, VARIANT_BOOL* ok) override {
    note(L"RenameTable", oldName, newName);
    return engine_->RenameTable(oldName, newName, ok);
  }
  HRESULT STDMETHODCALLTYPE CurrentIndexName(BSTR* name) override {
    note(L"CurrentIndexName");
    return engine_->CurrentIndexName(name);
  }
  HRESULT STDMETHODCALLTYPE CurrentTableName(BSTR* name) override {
    note(L"CurrentTableName");
    return engine_->CurrentTableName(name);
  }
  HRESULT STDMETHODCALLTYPE Replace(VARIANT fields, VARIANT* record, VARIANT_BOOL* ok) override {
    note(L"Replace", fields);
    return engine_->Replace(fields, record, ok);
  }
  HRESULT STDMETHODCALLTYPE Seek1(VARIANT key, VARIANT* record, VARIANT_BOOL* ok) override {
    note(L"Seek1", key);
    return engine_->Seek1(key, record, ok);
  }
  HRESULT STDMETHODCALLTYPE Seek2(VARIANT key1, VARIANT key2, VARIANT* record, VARIANT_BOOL* ok) override {
    note(L"Seek2", key1, key2);
    return engine_->Seek2(key1, key2, record, ok);
  }
  HRESULT STDMETHODCALLTYPE Seek3(VARIANT key1, VARIANT key2, VARIANT key3, VARIANT* record,
                                  VARIANT_BOOL* ok) override {
    note(L"Seek3", key1, key2, key3);
    return engine_->Seek3(key1, key2, key3, record, ok);
  }
  HRESULT STDMETHODCALLTYPE SeekN(VARIANT* key1, VARIANT* key2, VARIANT* key3, VARIANT* key4, VARIANT* key5,
                                  VARIANT* key6, VARIANT* key7, VARIANT* key8, VARIANT* key9, VARIANT* key10,
                                  LONG count, VARIANT* record, VARIANT_BOOL* ok) override {
    if (callTraceOn()) recordSeek({key1, key2, key3, key4, key5, key6, key7, key8, key9, key10}, count);
    return engine_->SeekN(key1, key2, key3, key4, key5, key6, key7, key8, key9, key10, count, record, ok);
  }
  HRESULT STDMETHODCALLTYPE CreateDatabase(BSTR path, VARIANT_BOOL* ok) override {
    note(L"CreateDatabase", path);
    return engine_->CreateDatabase(path, ok);
  }
  HRESULT STDMETHODCALLTYPE CreateTable(BSTR table, VARIANT definition, VARIANT_BOOL* ok) override {
    note(L"CreateTable", table, definition);
    return engine_->CreateTable(table, definition, ok);
  }
  HRESULT STDMETHODCALLTYPE IsReadOnly(VARIANT_BOOL* readOnly) override {
    note(L"IsReadOnly");
    return engine_->IsReadOnly(readOnly);
  }
  HRESULT STDMETHODCALLTYPE DeleteTable(BSTR table, VARIANT_BOOL flag, VARIANT_BOOL* ok) override {
    note(L"DeleteTable", table, flag);
    return engine_->DeleteTable(table, flag, ok);
  }
  HRESULT STDMETHODCALLTYPE ListTables(VARIANT* names, VARIANT_BOOL* ok) override {
    note(L"ListTables");
    return engine_->ListTables(names, ok);
  }
  HRESULT STDMETHODCALLTYPE ExecuteSql(BSTR sql, VARIANT* rows, VARIANT_BOOL* ok) override {
    note(L"ExecuteSql", sql);
    return engine_->ExecuteSql(sql, rows, ok);
  }
  HRESULT STDMETHODCALLTYPE ExecuteStatement(BSTR sql, VARIANT_BOOL* ok) override {
    note(L"ExecuteStatement", sql);
    return engine_->ExecuteStatement(sql, ok);
  }
  HRESULT STDMETHODCALLTYPE RelationExists(BSTR name, VARIANT_BOOL* exists, VARIANT_BOOL* ok) override {
    note(L"RelationExists", name);
    return engine_->RelationExists(name, exists, ok);
  }
  HRESULT STDMETHODCALLTYPE RelationDelete(BSTR first, BSTR second, VARIANT_BOOL* ok) override {
    note(L"RelationDelete", first, second);
    return engine_->RelationDelete(first, second, ok);
  }
  HRESULT STDMETHODCALLTYPE CompactDatabase(BSTR source, BSTR destination, VARIANT_BOOL* ok) override {
    note(L"CompactDatabase", source, destination);
    return engine_->CompactDatabase(source, destination, ok);
  }
  HRESULT STDMETHODCALLTYPE LinkTable(BSTR first, BSTR second, BSTR third, VARIANT_BOOL* linked,
                                      VARIANT_BOOL* ok) override {
    note(L"LinkTable", first, second, third);
    return engine_->LinkTable(first, second, third, linked, ok);
  }
  HRESULT STDMETHODCALLTYPE RunQuery(BSTR name, VARIANT parameters, VARIANT* rows,
                                     VARIANT_BOOL* ok) override {
    note(L"RunQuery", name, parameters);
    return engine_->RunQuery(name, parameters, rows, ok);
  }
  HRESULT STDMETHODCALLTYPE CreateIndex(BSTR first, BSTR second, VARIANT_BOOL flag1, VARIANT_BOOL flag2,
                                        VARIANT_BOOL* ok) override {
    note(L"CreateIndex", first, second, flag1, flag2);
    return engine_->CreateIndex(first, second, flag1, flag2, ok);
  }
  HRESULT STDMETHODCALLTYPE CreateQuery(BSTR name, BSTR sql, VARIANT_BOOL* ok) override {
    note(L"CreateQuery", name, sql);
    return engine_->CreateQuery(name, sql, ok);
  }
  HRESULT STDMETHODCALLTYPE OpenPrivate(BSTR path, VARIANT_BOOL* readOnly, VARIANT_BOOL* ok) override {
    note(L"OpenPrivate", path);
    return engine_->OpenPrivate(path, readOnly, ok);
  }
  HRESULT STDMETHODCALLTYPE PositionFlagA(VARIANT_BOOL* afterLast) override {
    note(L"PositionFlagA");
    return engine_->PositionFlagA(afterLast);
  }
  HRESULT STDMETHODCALLTYPE PositionFlagB(VARIANT_BOOL* beforeFirst) override {
    note(L"PositionFlagB");
    return engine_->PositionFlagB(beforeFirst);
  }
  HRESULT STDMETHODCALLTYPE FieldRequired(BSTR table, BSTR field, VARIANT_BOOL* required,
                                          VARIANT_BOOL* ok) override {
    note(L"FieldRequired", table, field);
    return engine_->FieldRequired(table, field, required, ok);
  }
  HRESULT STDMETHODCALLTYPE Attributes(BSTR name, VARIANT* pairs, VARIANT_BOOL* ok) override {
    note(L"Attributes", name);
    return engine_->Attributes(name, pairs, ok);
  }
  HRESULT STDMETHODCALLTYPE FieldValue(BSTR field, VARIANT value, VARIANT_BOOL* ok) override {
    note(L"FieldValue", field, value);
    return engine_->FieldValue(field, value, ok);
  }
  HRESULT STDMETHODCALLTYPE ExecuteCommand(BSTR sql, LONG* count, VARIANT_BOOL* ok) override {
    note(L"ExecuteCommand", sql);
    return engine_->ExecuteCommand(sql, count, ok);
  }
  HRESULT STDMETHODCALLTYPE EngineVersion(SHORT* version) override {
    note(L"EngineVersion");
    return engine_->EngineVersion(version);
  }

 private:
  ~TracingEngine() = default;

  template <class... Inputs>
  static void note(const wchar_t* method, const Inputs&... inputs) {
    if (callTraceOn()) recordCall(method, {argument(inputs)...});
  }
  static void recordSeek(const std::array<const VARIANT*, 10>& keys, LONG count) {
    std::vector<COleVariant> given;
    for (LONG i = 0; i < std::clamp<LONG>(count, 0, 10); ++i) {
      const VARIANT* key = keys[static_cast<size_t>(i)];
      given.push_back(key ? argument(*key) : COleVariant());
    }
    given.emplace_back(count);
    recordCall(L"SeekN", std::move(given));
  }

  std::atomic<ULONG> references_ = 1;
  ComPtr<IZbEngine> engine_;
};

}  // namespace

ComPtr<IZbEngine> traced(const ComPtr<IZbEngine>& engine) {
  return ComPtr<IZbEngine>::attach(new TracingEngine(engine));
}
