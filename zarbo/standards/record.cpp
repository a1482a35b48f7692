#include "zarbo/standards/record.h"

#include <algorithm>
#include <utility>

#include "platform/com/com_error.h"

namespace {

constexpr const wchar_t* keepIndex = nullptr;

bool isMasterColumn(const Column& column) {
  const std::wstring_view name = column.name();
  return name == L"ixMasterDatabase" || name == L"iMasterDatabaseIndex";
}

void check(HRESULT result) { checkResult(result, interfaceId<IZbEngine>); }

}  // namespace

StandardsRecord::StandardsRecord(RecordTable table, bool leaveMasterColumns, IZbEngine* connection)
    : connection_(connection),
      table_(table),
      tableName_(table.table),
      bLeaveMasterColumns(leaveMasterColumns) {}

void StandardsRecord::describe(std::vector<Column*> members, IntegerColumn& counter,
                               std::vector<Column*> written) {
  members_ = std::move(members);
  written_ = written.empty() ? members_ : std::move(written);
  counter_ = &counter;
}

bool StandardsRecord::selectTable(const wchar_t* index) {
  return connection_.setTable(tableName_, index ? index : L"");
}

bool StandardsRecord::loadWhen(bool ok, const COleVariant& record) {
  if (ok) LoadRecord(record);
  return ok;
}

bool StandardsRecord::FindByKey(const std::wstring& text) {
  if (!connection_ || !table_.textIndex || !selectTable(table_.textIndex)) return false;
  COleVariant record;
  return loadWhen(connection_.seek1(COleVariant(text), record), record);
}

bool StandardsRecord::FindByIndex(int32_t counter) {
  if (!connection_ || !selectTable(table_.counterIndex)) return false;
  COleVariant record;
  return loadWhen(connection_.seek1(COleVariant(LONG{counter}), record), record);
}

void StandardsRecord::SetIndex(const wchar_t* index) {
  if (connection_) selectTable(index);
}

bool StandardsRecord::stands(HRESULT (IZbEngine::*flag)(short*)) {
  if (!connection_) return true;
  selectTable(keepIndex);
  short answer = 0;
  check((connection_.object().*flag)(&answer));
  return static_cast<uint16_t>(answer) >= 65535;
}

bool StandardsRecord::IsFirst() { return stands(&IZbEngine::PositionFlagB); }

bool StandardsRecord::IsEnd() { return stands(&IZbEngine::PositionFlagA); }

void StandardsRecord::moveTo(bool (Engine::*move)(COleVariant&)) {
  if (!connection_) return;
  selectTable(keepIndex);
  COleVariant record;
  loadWhen((connection_.*move)(record), record);
}

void StandardsRecord::MoveFirst() { moveTo(&Engine::moveTop); }

void StandardsRecord::MoveNext() {
  if (!connection_) return;
  selectTable(keepIndex);
  COleVariant record;
  loadWhen(connection_.skip(1, record), record);
}

void StandardsRecord::AddNew() {
  if (!connection_) return;
  bAdding = true;
  bEditing = false;
  ClearChanges();
}

void StandardsRecord::Edit() {
  if (!connection_) return;
  bEditing = true;
  bAdding = false;
  ClearChanges();
  iEditIndex = counter_->get();
}

void StandardsRecord::Delete() {
  if (!connection_) return;
  selectTable(table_.counterIndex);
  if (!FindByIndex(counter_->get())) return;
  connection_.deleteRecord();
}

void StandardsRecord::Update() {
  if (!connection_) return;
  const COleVariant fields = changedFields();
  if (fields.vt == VT_EMPTY) return;
  // Mode and flags go in every case, also when the engine throws.
  struct Ending {
    StandardsRecord& record;
    ~Ending() {
      record.bAdding = record.bEditing = false;
      record.ClearChanges();
    }
  } ending{*this};
  writeChanges(fields);
}

/// Empty when nothing was changed.
COleVariant StandardsRecord::changedFields() const {
  std::vector<COleVariant> values;
  for (const Column* column : written_) {
    if (!column->changed() || (bLeaveMasterColumns && isMasterColumn(*column))) continue;
    values.emplace_back(column->name());
    values.push_back(column->stored());
  }
  if (values.empty()) return {};
  COleSafeArray fields;
  fields.CreateOneDim(VT_VARIANT, static_cast<ULONG>(values.size()), values.data());
  return COleVariant(fields);
}

void StandardsRecord::writeChanges(const COleVariant& fields) {
  COleVariant record;
  bool ok = false;
  if (bAdding) {
    if (!selectTable(table_.counterIndex)) return;
    ok = connection_.append(fields, false, record);
  } else if (bEditing) {
    if (!FindByIndex(iEditIndex)) return;
    ok = connection_.replace(fields, record);
  }
  loadWhen(ok, record);
}

void StandardsRecord::ClearChanges() {
  if (!connection_) return;
  for (Column* column : members_) column->clearChanged();
  iEditIndex = 0;
}

void StandardsRecord::ReleaseTable() {
  if (connection_) check(connection_.object().ReleaseTable(Bstr(tableName_).get()));
}

void StandardsRecord::SetFieldValue(const wchar_t* name, const COleVariant& value) {
  if (!connection_) return;
  selectTable(keepIndex);
  short ok = 0;
  check(connection_.object().FieldValue(Bstr(name).get(), value, &ok));
}

void StandardsRecord::LoadRecord(const VARIANT& record) {
  if (!connection_) return;
  const VariantElements pairs(record);
  auto next = members_.begin();
  for (ULONG i = 0; i + 1 < pairs.size(); i += 2) {
    if (pairs[i].vt != VT_BSTR) continue;
    // The engine gives the columns in the table's order, which mostly is that of the members.
    const auto isWanted = [name = viewOf(pairs[i].bstrVal)](const Column* each) {
      return name == each->name();
    };
    auto column = std::find_if(next, members_.end(), isWanted);
    if (column == members_.end()) {
      column = std::find_if(members_.begin(), next, isWanted);
      if (column == next) continue;
    }
    (*column)->load(pairs[i + 1]);
    next = column + 1;
  }
  ClearChanges();
}
