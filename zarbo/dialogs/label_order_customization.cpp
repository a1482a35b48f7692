#include <algorithm>
#include <optional>
#include <set>

#include "brx/lisp_calls.h"
#include "platform/text/trim.h"
#include "zarbo/database/connections.h"
#include "zarbo/dialogs/cell_texts.h"
#include "zarbo/dialogs/customization_functions.h"
#include "zarbo/dialogs/dialog_database.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"
#include "zarbo/frame/variant_values.h"
#include "zarbo/widgets/dialog.h"
#include "zarbo/widgets/sql_text.h"

namespace {

using platform::Form;
using platform::Grid;

constexpr int labels = 1048;
enum Button { moveUp = 3, moveDown = 4 };
enum Column { nothing, counter, key, label, width, justification, display, columnCount };
constexpr int shownDecimals = 4;
const std::wstring titleKey = L"Schedule Title";

struct LabelGroup {
  std::wstring group;
  /// Empty: no widths and no justifications; "SAME": one width for all rows; any other: both columns.
  std::wstring widthWord;
  std::wstring titleWord;
  std::set<std::wstring> hiddenKeys;

  bool hasWidths() const { return !widthWord.empty(); }
  bool hasJustifications() const { return hasWidths() && !hasOneWidth(); }
  bool hasOneWidth() const { return widthWord == L"SAME"; }
};

/// The rows of a schedule or a label: their names, their order, and which are shown. The engine is where OK
/// writes; what is shown is read by the active connection, also where the dialog has a database of its own.
class LabelOrderCustomization {
 public:
  LabelOrderCustomization(Engine engine, LabelGroup group);
  int doModal() { return runModuleDialog(form_); }

 private:
  void layOut();
  void setUpGrid();
  void fill();
  void addRecord(const VARIANT* first, const VARIANT* end);
  void hideRows();
  void moveRow(int by);
  bool mayEdit(int row, int column) const;
  void spreadWidth(int row);
  void write();
  std::wstring statementOf(int row) const;
  std::wstring cell(int row, int column) const { return std::wstring(trimmedRight(grid_.text(row, column))); }

  Engine engine_;
  LabelGroup group_;
  Form form_;
  Grid& grid_;
};

LabelOrderCustomization::LabelOrderCustomization(Engine engine, LabelGroup group)
    : engine_(std::move(engine)),
      group_(std::move(group)),
      form_(group_.titleWord + L" Label Display and Order", L"kv_zarbo:LabelOrderCustomization"),
      grid_(form_.addGrid(labels, columnCount, 1, 1)) {
  form_.addButton(moveUp, L"Move &Up", [this] { moveRow(-1); });
  form_.addButton(moveDown, L"Move &Down", [this] { moveRow(1); });
  form_.addOkAndCancel();
  layOut();
  form_.onStart = [this] {
    setUpGrid();
    fill();
    hideRows();
    grid_.autoSize();
    if (grid_.rows() > 1) grid_.setFocus(1, key);
  };
  form_.control(platform::okButton).onPress = [this] {
    write();
    form_.close();
  };
  grid_.onBeginEdit = [this](int row, int column) { return mayEdit(row, column); };
  grid_.onEndEdit = [this](int row, int column) {
    if (column == width && group_.hasOneWidth()) spreadWidth(row);
  };
}

void LabelOrderCustomization::layOut() {
  form_.control(labels).size(80, 18);
  form_.setLayout(platform::column(
      {labels, platform::row({moveUp, moveDown, platform::space()}), platform::okAndCancel()}));
  form_.setFocus(labels);
}

void LabelOrderCustomization::setUpGrid() {
  constexpr const wchar_t* headers[] = {L"",      L"ixLabelGroup",  L"Key",    L"Label",
                                        L"Width", L"Justification", L"Display"};
  for (int column = 0; column < columnCount; ++column) grid_.setText(0, column, headers[column]);
  grid_.setWholeRows(true);
  grid_.setColumnHidden(nothing);
  grid_.setColumnHidden(counter);
  grid_.setColumnHidden(width, !group_.hasWidths());
  grid_.setColumnHidden(justification, !group_.hasJustifications());
  grid_.setColumnChoices(justification, L"Left|Center|Right");
  grid_.setColumnKind(display, platform::CellKind::checkBox);
}

void LabelOrderCustomization::fill() {
  COleVariant rows;
  if (!activeConnection() ||
      !activeConnection().executeSql(
          L"select ixLabelGroup, sKey, sLabel, dWidth, sJustification, bDisplay from tblLabelGroup where "
          L"sGroup = " +
              sqlText(group_.group) + L" order by iSortOrder",
          rows)) {
    return;
  }
  const platform::RedrawOff quiet(grid_);
  const VariantElements elements(rows);
  const auto isMark = [](const VARIANT& each) {
    return each.vt == VT_BSTR && viewOf(each.bstrVal) == newRecordMark;
  };
  for (const VARIANT* at = elements.begin(); at != elements.end();) {
    const VARIANT* const first = isMark(*at) ? at + 1 : at;
    const VARIANT* next = first;
    // Marks stand where names do.
    while (next != elements.end() && !isMark(*next))
      next += std::min<std::ptrdiff_t>(2, elements.end() - next);
    addRecord(first, next);
    at = next;
  }
}

void LabelOrderCustomization::addRecord(const VARIANT* first, const VARIANT* end) {
  const int row = grid_.insertRow();
  for (; first != end && first + 1 != end; first += 2) {
    if (first->vt != VT_BSTR) continue;
    const std::wstring_view name = viewOf(first->bstrVal);
    const VARIANT& value = first[1];
    const bool isTitle = grid_.text(row, key) == titleKey;
    if (name == L"ixLabelGroup") grid_.setText(row, counter, cellText(value));
    if (name == L"sKey") grid_.setText(row, key, cellText(value));
    if (name == L"sLabel") grid_.setText(row, label, cellText(value));
    if (name == L"dWidth" && group_.hasWidths() && !isTitle) {
      grid_.setText(row, width, numberText(value, shownDecimals));
    }
    if (name == L"sJustification" && group_.hasJustifications() && !isTitle) {
      grid_.setText(row, justification, cellText(value));
    }
    if (name == L"bDisplay") grid_.setText(row, display, flagText(value));
  }
}

void LabelOrderCustomization::hideRows() {
  for (int row = grid_.rows() - 1; row > 0; --row) {
    if (group_.hiddenKeys.contains(grid_.text(row, key))) grid_.deleteRow(row);
  }
}

void LabelOrderCustomization::moveRow(int by) {
  const int row = grid_.focusRow(), target = row + by;
  if (row < 1 || target < 1 || target >= grid_.rows()) return;
  grid_.swapRows(row, target);
  grid_.setFocus(target, key);
}

bool LabelOrderCustomization::mayEdit(int row, int column) const {
  if (column == key) return false;
  const bool isOfRow = column == width || column == justification || column == display;
  return !isOfRow || grid_.text(row, key) != titleKey;
}

void LabelOrderCustomization::spreadWidth(int row) {
  const std::wstring text = grid_.text(row, width);
  for (int each = 1; each < grid_.rows(); ++each) grid_.setText(each, width, text);
}

// The header row sends its statement like any other. With a width word the engine refuses it; without one it
// changes the whole table, and the statements behind it put the grid's rows right again. Applications count
// on it.
void LabelOrderCustomization::write() {
  for (int row = 0; row < grid_.rows(); ++row) engine_.executeStatement(statementOf(row));
}

std::wstring LabelOrderCustomization::statementOf(int row) const {
  std::wstring sql = L"update tblLabelGroup set sLabel = " + sqlText(cell(row, label));
  if (group_.hasWidths()) {
    const std::wstring text = cell(row, width);
    sql += L", dWidth = " + (text.empty() ? L"NULL" : text);
  }
  if (group_.hasJustifications()) {
    const std::wstring text = cell(row, justification);
    sql += L", sJustification = " + sqlText(text.empty() ? L"Left" : text);
  }
  const std::wstring shown = cell(row, display);
  sql += std::wstring(L", bDisplay = ") + (shown == titleKey || shown == L"0" ? L"0" : L"-1");
  sql += L", iSortOrder = " + (cell(row, key) == titleKey ? L"-1" : std::to_wstring(row));
  return sql + L" where ixLabelGroup = " + cell(row, counter);
}

std::set<std::wstring> getKeys(ArgCursor& cursor) {
  std::set<std::wstring> keys;
  if (!skipListBegin(cursor)) return keys;
  std::wstring key;
  while (getString(cursor, key)) keys.insert(key);
  return keys;
}

}  // namespace

int kvCustomizeLabelGroup() {
  acedRetNil();
  LispArgs args;
  LabelGroup group;
  if (!getString(args.cursor, group.group) || !getString(args.cursor, group.widthWord)) return wrongType;
  std::optional<std::wstring> path(std::in_place);
  if (!getString(args.cursor, *path)) {
    path.reset();
    skipItem(args.cursor);
  }
  if (!getString(args.cursor, group.titleWord)) {
    group.titleWord = group.group;
    skipItem(args.cursor);
  }
  const ModuleResources resources;
  const DialogConnection connection(path);
  if (!connection.engine()) return done;
  group.hiddenKeys = getKeys(args.cursor);
  LabelOrderCustomization(connection.engine(), std::move(group)).doModal();
  return done;
}
