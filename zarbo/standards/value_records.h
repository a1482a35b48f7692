#pragma once

#include <string>

#include "zarbo/standards/record.h"

/// Named global values and the text styles that the application uses by key.

class tblGlobal : public StandardsRecord {
 public:
  explicit tblGlobal(IZbEngine* connection);

  IntegerColumn ixGlobal{L"ixGlobal"};
  TextColumn sKey{L"sKey"};
  /// True: the value lies in `dNumber`; false: in `sText`.
  FlagColumn bNumeric{L"bNumeric"};
  TextColumn sText{L"sText", Nulls::allowed};
  RealColumn dNumber{L"dNumber", Nulls::allowed};
};

/// A null column takes the value of the row with the key "Default".
class tblTextStyle : public StandardsRecord {
 public:
  tblTextStyle(bool bLeaveMasterColumns, IZbEngine* connection);

  IntegerColumn ixTextStyle{L"ixTextStyle"};
  TextColumn sKey{L"sKey"};
  TextColumn sStyleName{L"sStyleName", Nulls::allowed};
  RealColumn dHeight{L"dHeight", Nulls::allowed};
  RealColumn dScaleFactor{L"dScaleFactor", Nulls::allowed};
  IntegerColumn ixMasterDatabase{L"ixMasterDatabase", Nulls::allowed};
  IntegerColumn iMasterDatabaseIndex{L"iMasterDatabaseIndex", Nulls::allowed};
};

/// An empty text, or 0, when `record` is null, the key isn't found or the column is null.
std::wstring GetGlobalText(tblGlobal* record, const std::wstring& key);
double GetGlobalNumber(tblGlobal* record, const std::wstring& key);

/// Change the row of the key or add one. The other value column keeps what it has. Without a record
/// nothing happens.
void SetGlobalText(tblGlobal* record, const std::wstring& key, const std::wstring& text);
void SetGlobalNumber(tblGlobal* record, const std::wstring& key, double number);
