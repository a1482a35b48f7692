#include <string_view>

#include "brx/lisp_calls.h"
#include "zarbo/dialogs/dialog_functions.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"
#include "zarbo/support/user_settings.h"
#include "zarbo/widgets/dialog.h"
#include "zarbo/widgets/grid_rows.h"

namespace {

using platform::Form;
using platform::Grid;

constexpr int settings = 1048;
enum Column { label, value, subKey, valueName, isYesNo, columnCount };

/// Settings of the user, in categories, by the user's discipline and edition.
class CUserOptions {
 public:
  CUserOptions(std::wstring discipline, std::wstring edition);
  int doModal() { return runModuleDialog(form_); }

 private:
  void addRows();
  void readValues();
  void writeValues();

  std::wstring discipline_, edition_;
  Form form_;
  Grid& grid_;
};

struct SettingRow {
  /// Any discipline when empty.
  std::wstring_view discipline;
  bool inElecPlus;
  const wchar_t *category, *label, *subKey, *valueName;
  bool isYesNo;
};
constexpr bool yesNo = true, text = false;
constexpr wchar_t updateAlert[] = L"Alert me when updates are available";
constexpr SettingRow rows[] = {
    {L"", true, L"User Support Information", L"Name", L"Shared", L"Name", text},
    {L"", true, L"User Support Information", L"Email", L"Shared", L"Email", text},
    {L"", true, L"User Support Information", L"Phone", L"Shared", L"Phone", text},
    {L"", true, L"User Support Information",
     L"Save support emails to the desktop (set to \"Yes\" if sending fails or crashes)", L"Shared",
     L"bSendToDesktop2", yesNo},
    {L"", true, L"Drawing Options", L"Zoom to schedule after insertion", L"Shared", L"bZoomToSchedule",
     yesNo},
    {L"", false, L"Drawing Options", L"Automatically open drawings that need to be updated", L"Shared",
     L"bAutoUpdateDrawings", yesNo},
    {L"ELEC", true, L"Electrical", updateAlert, L"Electrical", L"bUpdateAlert", yesNo},
    {L"ELEC", false, L"Electrical", L"Warn if distribution equipment is overloaded", L"Electrical",
     L"bAlertOverloadPanel", yesNo},
    {L"ELEC", false, L"Electrical", L"Recalculate illuminance levels after query", L"Electrical",
     L"bRecalculatePhotoAfterQuery", yesNo},
    // The two disciplines share their values.
    {L"PHOTO", true, L"Photometrics", updateAlert, L"Electrical", L"bUpdateAlert", yesNo},
    {L"PHOTO", true, L"Photometrics", L"Recalculate illuminance levels after query", L"Electrical",
     L"bRecalculatePhotoAfterQuery", yesNo},
    {L"HVAC", true, L"HVAC", updateAlert, L"HVAC", L"bUpdateAlert", yesNo},
    {L"PLUMB", true, L"Plumbing", updateAlert, L"Plumbing", L"bUpdateAlert", yesNo},
};

std::wstring ReadUserSetting(const std::wstring& key, const std::wstring& name) {
  return getRegistryValue(key, name);
}

platform::SettingStatus WriteUserSetting(const std::wstring& key, const std::wstring& name,
                                         const std::wstring& text) {
  return setRegistryValue(key, name, text);
}

CUserOptions::CUserOptions(std::wstring discipline, std::wstring edition)
    : discipline_(std::move(discipline)),
      edition_(std::move(edition)),
      form_(L"Korvane User Settings", L"kv_zarbo:UserOptions"),
      grid_(form_.addGrid(settings, columnCount)) {
  form_.addOkAndCancel();
  form_.control(settings).size(118, 16);
  form_.setLayout(platform::column({settings, platform::okAndCancel()}));
  form_.setFocus(settings);
  form_.onStart = [this] {
    addRows();
    readValues();
    grid_.autoSize();
    constexpr int firstSetting = 2;
    if (grid_.rows() >= firstSetting + 1) grid_.setFocus(firstSetting, value);
  };
  form_.control(platform::okButton).onPress = [this] {
    writeValues();
    form_.close();
  };
  grid_.onBeginEdit = [](int, int column) { return column != label; };
}

void CUserOptions::addRows() {
  constexpr const wchar_t* headers[] = {L"Name", L"Value", L"sSubKey", L"sValueName", L"bIsYesNo"};
  for (int column = 0; column < columnCount; ++column) {
    grid_.setText(0, column, headers[column]);
    grid_.setColumnName(column, headers[column]);
    grid_.setColumnHidden(column, column >= subKey);
  }
  grid_.setColumnKind(label, platform::CellKind::tree);
  grid_.setWholeRows(true);
  std::wstring category;
  for (const SettingRow& row : rows) {
    if (!row.discipline.empty() && row.discipline != discipline_) continue;
    if (!row.inElecPlus && edition_ == L"ElecPlus") continue;
    if (row.category != category) AddCategoryRow(grid_, category = row.category);
    const int made = AddSettingRow(grid_, row.label, row.isYesNo);
    grid_.setText(made, subKey, row.subKey);
    grid_.setText(made, valueName, row.valueName);
    grid_.setText(made, isYesNo, row.isYesNo ? L"-1" : L"0");
  }
}

void CUserOptions::readValues() {
  for (int row = 1; row < grid_.rows(); ++row) {
    if (grid_.text(row, valueName).empty()) continue;
    std::wstring stored = ReadUserSetting(grid_.text(row, subKey), grid_.text(row, valueName));
    // A value that was never written counts as "Yes".
    if (grid_.text(row, isYesNo) == L"-1") stored = stored == L"0" ? L"No" : L"Yes";
    grid_.setText(row, value, stored);
  }
}

void CUserOptions::writeValues() {
  for (int row = 1; row < grid_.rows(); ++row) {
    if (grid_.text(row, valueName).empty()) continue;
    std::wstring shown = grid_.text(row, value);
    if (grid_.text(row, isYesNo) == L"-1") shown = shown == L"Yes" ? L"1" : L"0";
    WriteUserSetting(grid_.text(row, subKey), grid_.text(row, valueName), shown);
  }
}

}  // namespace

int editUserOptions() {
  acedRetNil();
  LispArgs args;
  std::wstring discipline, edition;
  if (!getString(args.cursor, discipline)) return wrongType;
  if (!getString(args.cursor, edition)) edition = L"NOT ELEC";
  CUserOptions(discipline, edition).doModal();
  return done;
}
