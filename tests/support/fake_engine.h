#pragma once

#include <deque>
#include <string>
#include <utility>
#include <vector>

#include "interfaces/engine.h"
#include "platform/com/class_objects.h"
#include "platform/com/owners.h"
#include "tests/support/fake_object.h"

/// An engine that holds no data: tests set its state, queue its answers and read its log.
class FakeEngine : public FakeObject<IZbEngine> {
 public:
  /// Set by tests.
  bool connected = true, open = false, writable = false;
  std::wstring name;
  std::deque<std::wstring> connectAnswers;           ///< "OK" when there is none left
  std::deque<std::pair<long, std::wstring>> errors;  ///< the pending error is the first one
  std::deque<std::vector<COleVariant>> records;  ///< answers of appends and seeks; false when none is left
  /// Names of the calls that do something.
  std::wstring log;

  HRESULT STDMETHODCALLTYPE Connect(BSTR path, VARIANT_BOOL, VARIANT_BOOL readOnly, BSTR* status) override {
    log += L"Connect ";
    std::wstring answer = L"OK";
    if (!connectAnswers.empty()) {
      answer = connectAnswers.front();
      connectAnswers.pop_front();
    }
    open = !answer.empty();
    writable = !readOnly;
    name = L"/data/" + std::wstring(viewOf(path));
    *status = Bstr(answer).detach();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE IsConnected(VARIANT_BOOL* answer) override { return give(answer, connected); }
  HRESULT STDMETHODCALLTYPE IsOpen(VARIANT_BOOL* answer) override { return give(answer, open); }
  HRESULT STDMETHODCALLTYPE IsWritable(VARIANT_BOOL* answer) override { return give(answer, writable); }
  HRESULT STDMETHODCALLTYPE IsReadOnly(VARIANT_BOOL* answer) override { return give(answer, !writable); }
  HRESULT STDMETHODCALLTYPE DatabaseName(BSTR* answer) override {
    *answer = Bstr(open ? name : L"").detach();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE CloseDatabase(VARIANT_BOOL* answer) override {
    log += L"CloseDatabase ";
    open = false;
    return give(answer, true);
  }
  HRESULT STDMETHODCALLTYPE ErrorPending(VARIANT_BOOL* answer) override {
    return give(answer, !errors.empty());
  }
  HRESULT STDMETHODCALLTYPE LastError(LONG* code, BSTR* text) override {
    *code = errors.empty() ? 0 : static_cast<LONG>(errors.front().first);
    *text = Bstr(errors.empty() ? L"" : errors.front().second).detach();
    if (!errors.empty()) errors.pop_front();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Append(VARIANT, VARIANT_BOOL, VARIANT* record, VARIANT_BOOL* ok) override {
    log += L"Append ";
    return giveRecord(record, ok);
  }
  HRESULT STDMETHODCALLTYPE MoveBottom(VARIANT* record, VARIANT_BOOL* ok) override {
    return giveRecord(record, ok);
  }
  HRESULT STDMETHODCALLTYPE MoveTop(VARIANT* record, VARIANT_BOOL* ok) override {
    return giveRecord(record, ok);
  }
  HRESULT STDMETHODCALLTYPE DeleteRecord(VARIANT_BOOL* ok) override {
    log += L"DeleteRecord ";
    return give(ok, true);
  }
  HRESULT STDMETHODCALLTYPE Seek1(VARIANT key, VARIANT* record, VARIANT_BOOL* ok) override {
    log += L"Seek1 " + typeOf(key);
    return giveRecord(record, ok);
  }
  HRESULT STDMETHODCALLTYPE Seek2(VARIANT key1, VARIANT key2, VARIANT* record, VARIANT_BOOL* ok) override {
    log += L"Seek2 " + typeOf(key1) + typeOf(key2);
    return giveRecord(record, ok);
  }
  HRESULT STDMETHODCALLTYPE Seek3(VARIANT key1, VARIANT key2, VARIANT key3, VARIANT* record,
                                  VARIANT_BOOL* ok) override {
    log += L"Seek3 " + typeOf(key1) + typeOf(key2) + typeOf(key3);
    return giveRecord(record, ok);
  }
  HRESULT STDMETHODCALLTYPE SeekN(VARIANT* key1, VARIANT* key2, VARIANT* key3, VARIANT* key4, VARIANT* key5,
                                  VARIANT* key6, VARIANT* key7, VARIANT* key8, VARIANT* key9, VARIANT* key10,
                                  LONG count, VARIANT* record, VARIANT_BOOL* ok) override {
    log += L"SeekN " + std::to_wstring(count) + L": ";
    for (VARIANT* each : {key1, key2, key3, key4, key5, key6, key7, key8, key9, key10}) log += typeOf(*each);
    return giveRecord(record, ok);
  }

  // The rest succeeds and gives nothing.
  HRESULT STDMETHODCALLTYPE SetTable(BSTR, BSTR, VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Reserved1() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Reserved2() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Reserved3() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Skip(LONG, VARIANT*, VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE CurrentRecord(VARIANT*, VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE ReleaseTable(BSTR) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE ReservedFlag(VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE CloseTable(VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE CloseAllTables(VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE RecordCount(LONG*, VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Exists(BSTR, VARIANT_BOOL*, VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Structure(VARIANT*, VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE ListIndexes(VARIANT*, VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE ModifyTable(BSTR, VARIANT, VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE RenameTable(BSTR, BSTR, VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE CurrentIndexName(BSTR*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE CurrentTableName(BSTR*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Replace(VARIANT, VARIANT*, VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE CreateDatabase(BSTR, VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE CreateTable(BSTR, VARIANT, VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE DeleteTable(BSTR, VARIANT_BOOL, VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE ListTables(VARIANT*, VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE ExecuteSql(BSTR, VARIANT*, VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE ExecuteStatement(BSTR, VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE RelationExists(BSTR, VARIANT_BOOL*, VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE RelationDelete(BSTR, BSTR, VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE CompactDatabase(BSTR, BSTR, VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE LinkTable(BSTR, BSTR, BSTR, VARIANT_BOOL*, VARIANT_BOOL*) override {
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE RunQuery(BSTR, VARIANT, VARIANT*, VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE CreateIndex(BSTR, BSTR, VARIANT_BOOL, VARIANT_BOOL, VARIANT_BOOL*) override {
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE CreateQuery(BSTR, BSTR, VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OpenPrivate(BSTR, VARIANT_BOOL*, VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE PositionFlagA(VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE PositionFlagB(VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE FieldRequired(BSTR, BSTR, VARIANT_BOOL*, VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Attributes(BSTR, VARIANT*, VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE FieldValue(BSTR, VARIANT, VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE ExecuteCommand(BSTR, LONG*, VARIANT_BOOL*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE EngineVersion(SHORT*) override { return S_OK; }

 private:
  static HRESULT give(VARIANT_BOOL* slot, bool answer) {
    *slot = answer ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
  }
  static std::wstring typeOf(const VARIANT& value) { return std::to_wstring(value.vt) + L" "; }
  HRESULT giveRecord(VARIANT* record, VARIANT_BOOL* ok) {
    if (records.empty()) return give(ok, false);
    COleSafeArray array;
    array.CreateOneDim(VT_VARIANT, static_cast<ULONG>(records.front().size()));
    const VariantElements slots(array);
    for (ULONG i = 0; i < slots.size(); ++i) slots[i] = records.front()[i].Detach();
    records.pop_front();
    *record = array.Detach();
    return give(ok, true);
  }
};
