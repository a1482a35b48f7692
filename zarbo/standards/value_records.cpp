#include "zarbo/standards/value_records.h"

tblGlobal::tblGlobal(IZbEngine* connection)
    : StandardsRecord({L"tblGlobal", L"sKey", L"ixGlobal"}, false, connection) {
  describe({&ixGlobal, &sKey, &bNumeric, &sText, &dNumber}, ixGlobal);
}

tblTextStyle::tblTextStyle(bool bLeaveMasterColumns, IZbEngine* connection)
    : StandardsRecord({L"tblTextStyle", L"sKey", L"ixTextStyle"}, bLeaveMasterColumns, connection) {
  describe(
      {&ixTextStyle, &sKey, &sStyleName, &dHeight, &dScaleFactor, &ixMasterDatabase, &iMasterDatabaseIndex},
      ixTextStyle);
}

namespace {

// Positions on the row of the key in edit mode, or begins a new row that bears it.
void editOrAdd(tblGlobal& record, const std::wstring& key) {
  if (record.FindByKey(key)) {
    record.Edit();
  } else {
    record.AddNew();
    record.sKey.set(key);
  }
}

}  // namespace

std::wstring GetGlobalText(tblGlobal* record, const std::wstring& key) {
  std::wstring text;
  if (record && record->FindByKey(key)) record->sText.get(text);
  return text;
}

double GetGlobalNumber(tblGlobal* record, const std::wstring& key) {
  double number = 0.0;
  if (record && record->FindByKey(key)) record->dNumber.get(number);
  return number;
}

void SetGlobalText(tblGlobal* record, const std::wstring& key, const std::wstring& text) {
  if (!record) return;
  editOrAdd(*record, key);
  record->sText.set(text);
  record->bNumeric.set(false);
  record->Update();
}

void SetGlobalNumber(tblGlobal* record, const std::wstring& key, double number) {
  if (!record) return;
  editOrAdd(*record, key);
  record->dNumber.set(number);
  record->bNumeric.set(true);
  record->Update();
}
