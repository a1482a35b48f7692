#include <optional>
#include <vector>

#include "brx/lisp_calls.h"
#include "platform/desktop/desktop.h"
#include "platform/text/trim.h"
#include "zarbo/dialogs/cell_texts.h"
#include "zarbo/dialogs/customization_functions.h"
#include "zarbo/dialogs/dialog_database.h"
#include "zarbo/frame/application_call.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"
#include "zarbo/widgets/dialog.h"
#include "zarbo/widgets/sql_text.h"

namespace {

using platform::Form;
using platform::Grid;

constexpr int styles = 1048;
enum Column { key, counter, style, height, scaleFactor, columnCount };
constexpr int shownDecimals = 4;

/// The text styles that the application wants shown. They are read with the engine's cursor and written by
/// statements, each row, whether it was changed or not.
class CTextStyleCustomization {
 public:
  CTextStyleCustomization(Engine engine, std::wstring startKey);
  int doModal() { return runModuleDialog(form_); }

 private:
  void setUpGrid();
  void fill();
  void addRecord(const VARIANT& record);
  void showStart();
  bool defaultsAreComplete();
  bool requireValue(int row, int column, const wchar_t* message);
  void write();
  std::wstring statementOf(int row) const;
  std::wstring cell(int row, int column) const { return std::wstring(trimmedRight(grid_.text(row, column))); }

  Engine engine_;
  std::wstring startKey_;
  Form form_;
  Grid& grid_;
};

CTextStyleCustomization::CTextStyleCustomization(Engine engine, std::wstring startKey)
    : engine_(std::move(engine)),
      startKey_(std::move(startKey)),
      form_(L"Text Styles", L"kv_zarbo:TextStyleCustomization"),
      grid_(form_.addGrid(styles, columnCount)) {
  constexpr int note = 1000;
  form_.addLabel(note, L"Values left blank will use the default.");
  form_.addOkAndCancel();
  form_.control(styles).size(70, 18);
  form_.setLayout(platform::column({styles, note, platform::okAndCancel()}));
  form_.setFocus(styles);
  form_.onStart = [this] {
    setUpGrid();
    fill();
    grid_.autoSize();
    if (grid_.rows() > 1) grid_.setFocus(1, style);
    showStart();
  };
  form_.control(platform::okButton).onPress = [this] {
    if (!defaultsAreComplete()) return;
    write();
    form_.close();
  };
}

void CTextStyleCustomization::setUpGrid() {
  constexpr const wchar_t* headers[] = {L"Text Style Key", L"ixTextStyle", L"Text Style", L"Height",
                                        L"Scale Factor"};
  for (int column = 0; column < columnCount; ++column) grid_.setText(0, column, headers[column]);
  grid_.setColumnHidden(counter);
}

void CTextStyleCustomization::fill() {
  COleVariant record;
  if (!engine_.setTable(L"tblTextStyle", L"sKey") || !engine_.moveTop(record)) return;
  // The application's function, which is asked of each row, may use the same connection.
  std::vector<COleVariant> records;
  do {
    records.push_back(std::move(record));
    record = COleVariant();
  } while (engine_.skip(1, record));
  const platform::RedrawOff quiet(grid_);
  for (const COleVariant& each : records) addRecord(each);
}

void CTextStyleCustomization::addRecord(const VARIANT& record) {
  std::wstring texts[columnCount];
  const VariantElements pairs(record);
  for (ULONG i = 0; i + 1 < pairs.size(); i += 2) {
    const std::wstring_view name = pairs[i].vt == VT_BSTR ? viewOf(pairs[i].bstrVal) : L"";
    if (name == L"sKey") texts[key] = cellText(pairs[i + 1]);
    if (name == L"ixTextStyle") texts[counter] = cellText(pairs[i + 1]);
    if (name == L"sStyleName") texts[style] = cellText(pairs[i + 1]);
    if (name == L"dHeight") texts[height] = numberText(pairs[i + 1], shownDecimals);
    if (name == L"dScaleFactor") texts[scaleFactor] = numberText(pairs[i + 1], shownDecimals);
  }
  ApplicationCall show(L"util-showTextStyle");
  if (!show.text(texts[key]).invoke() || show.answersNil()) return;
  const int row = grid_.insertRow();
  for (int column = 0; column < columnCount; ++column) grid_.setText(row, column, texts[column]);
  grid_.setReadOnly(row, key);
}

void CTextStyleCustomization::showStart() {
  if (startKey_.empty()) return;
  for (int row = 1; row < grid_.rows(); ++row) {
    if (grid_.text(row, key) != startKey_) continue;
    grid_.scrollTo(row, key);
    grid_.setFocus(row, height);
    grid_.grabFocus();
    return;
  }
}

/// Goes on behind a row that lacks a value, so that each is told.
bool CTextStyleCustomization::defaultsAreComplete() {
  bool complete = true;
  for (int row = 0; row < grid_.rows(); ++row) {
    if (grid_.text(row, key) != L"Default" && grid_.text(row, key) != L"DEFAULT") continue;
    complete = requireValue(row, style, L"DEFAULT \"Text Style\" must have a value.") &&
               requireValue(row, height, L"DEFAULT \"Height\" must have a value.") && complete;
  }
  return complete;
}

bool CTextStyleCustomization::requireValue(int row, int column, const wchar_t* message) {
  if (!cell(row, column).empty()) return true;
  platform::desktop().messageBox({L"Korvane", message, platform::informationIcon});
  grid_.setFocus(row, column);
  return false;
}

// Numbers go into the statement as they were typed; one that fails leaves its row as it was, without a word.
void CTextStyleCustomization::write() {
  for (int row = 1; row < grid_.rows(); ++row) engine_.executeStatement(statementOf(row));
}

std::wstring CTextStyleCustomization::statementOf(int row) const {
  const auto value = [&](int column) {
    const std::wstring text = cell(row, column);
    if (text.empty()) return std::wstring(L"NULL");
    return column == style ? sqlText(text) : text;
  };
  return L"update tblTextStyle set sStyleName = " + value(style) + L", dHeight = " + value(height) +
         L", dScaleFactor = " + value(scaleFactor) + L" where ixTextStyle = " + cell(row, counter);
}

}  // namespace

int kvCustomizeTextStyles() {
  acedRetNil();
  LispArgs args;
  std::optional<std::wstring> path(std::in_place);
  if (!getString(args.cursor, *path)) {
    path.reset();
    skipItem(args.cursor);
  }
  std::wstring startKey;
  if (!getString(args.cursor, startKey)) skipItem(args.cursor);
  const ModuleResources resources;
  const DialogConnection connection(path);
  if (connection.engine()) CTextStyleCustomization(connection.engine(), startKey).doModal();
  return done;
}
