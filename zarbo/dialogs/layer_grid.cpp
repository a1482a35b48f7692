#include "zarbo/dialogs/layer_grid.h"

#include <algorithm>

#include "platform/desktop/desktop.h"
#include "platform/desktop/form.h"
#include "platform/text/digits.h"
#include "platform/text/trim.h"
#include "zarbo/dialogs/dialog_database.h"
#include "zarbo/dialogs/layer_texts.h"
#include "zarbo/dialogs/linetype_dialog.h"
#include "zarbo/frame/application_call.h"
#include "zarbo/support/number_text.h"
#include "zarbo/support/utilities.h"
#include "zarbo/widgets/grid_rows.h"

namespace {

using namespace platform;

const std::wstring selectColor = L"Select color. . .", selectLinetype = L"Select linetype. . .";
/// What a colour or linetype cell held when its edit began.
std::wstring cellBeforeEdit;

BoxAnswer tell(const std::wstring& text, unsigned style) {
  return desktop().messageBox({L"Korvane", text, style});
}

bool isSure(const std::wstring& question) {
  return tell(question, unsigned{yesNoBox} | unsigned{questionIcon}) == BoxAnswer::yes;
}

int colorIndex(const std::wstring& text) { return std::clamp(readInteger(text), 1, 255); }

bool hasBadCharacter(const std::wstring& layerName) {
  // One stands twice; the message ends with the apostrophe. Both have always been so.
  return layerName.find_first_of(L"<>/\\>'\":;?*|,=") != std::wstring::npos;
}

}  // namespace

void LayerGrid::setUp() {
  constexpr const wchar_t* headers[] = {L"ixLayer", L"Layer Name", L"Color",     L"Linetype",
                                        L"Plot",    L"Lineweight", L"Plot Style"};
  for (int column = 0; column < columnCount; ++column) grid_.setText(0, column, headers[column]);
  grid_.setColumnHidden(counter);
  grid_.setColumnChoices(color, L"|" + selectColor);
  grid_.setColumnChoices(linetype, L"|" + selectLinetype);
  grid_.setColumnKind(plot, CellKind::checkBox);
  grid_.setColumnChoices(lineweight, lineweightChoices);
  grid_.setWholeRows(true);
  grid_.onBeginEdit = [this](int row, int column) {
    if (column == color || column == linetype) cellBeforeEdit = grid_.text(row, column);
    return true;
  };
}

void LayerGrid::fill() {
  {
    const RedrawOff quiet(grid_);
    tblLayer& layer = tables_.layer;
    layer.SetIndex(L"sName");
    grid_.setRowCount(1);
    for (layer.MoveFirst(); !layer.IsEnd(); layer.MoveNext()) {
      const int row = grid_.insertRow();
      int32_t index = 0;
      std::wstring style;
      grid_.setText(row, counter, intToText(layer.ixLayer.get()));
      grid_.setText(row, name, layer.sName.get());
      grid_.setText(row, color, layer.iColor.get(index) ? intToText(index) : L"");
      grid_.setText(row, linetype, layer.sLinetype.get());
      grid_.setText(row, plot, layer.bPlot.get() ? L"1" : L"0");
      grid_.setText(row, lineweight, lineweightText(layer.sLineweight));
      grid_.setText(row, plotStyle, layer.sPlotstyle.get(style) ? style : L"");
    }
  }
  grid_.autoSize();
  if (grid_.rows() > 1) grid_.setFocus(1, name);
}

void LayerGrid::show(int64_t layer) {
  const std::wstring wanted = intToText(layer);
  for (int row = 1; row < grid_.rows(); ++row) {
    if (grid_.text(row, counter) != wanted) continue;
    grid_.setFocus(row, name);
    return grid_.scrollTo(row, name);
  }
}

void LayerGrid::showByName(const std::wstring& layerName) {
  for (int row = 1; row < grid_.rows(); ++row) {
    if (grid_.text(row, name) != layerName) continue;
    grid_.setFocus(row, name);
    return grid_.scrollTo(row, name);
  }
}

int32_t LayerGrid::counterOf(int row) const { return readInteger(grid_.text(row, counter)); }

void LayerGrid::toRecord(int row) {
  tblLayer& layer = tables_.layer;
  layer.sName.set(grid_.text(row, name));
  layer.iColor.set(colorIndex(grid_.text(row, color)));
  layer.sLinetype.set(grid_.text(row, linetype));
  layer.bPlot.set(grid_.text(row, plot) != L"0");
  setLineweight(layer.sLineweight, grid_.text(row, lineweight));
  if (const std::wstring& style = grid_.text(row, plotStyle); style.empty()) {
    layer.sPlotstyle.SetNull();
  } else {
    layer.sPlotstyle.set(style);
  }
}

void LayerGrid::add() {
  const int row = AddUniqueRow(grid_, L"New Layer", name, counter, true);
  tables_.layer.AddNew();
  toRecord(row);
  tables_.layer.Update();
  // The counter's index is still the one in force: its last row is the new one.
  tables_.layer.MoveLast();
  grid_.setText(row, counter, intToText(tables_.layer.ixLayer.get()));
}

bool LayerGrid::remove() {
  const int row = grid_.focusRow();
  COleVariant users;
  tables_.engine.executeSql(
      L"select ixLayerKey from tblLayerKey where ixLayer = " + intToText(counterOf(row)), users);
  if (VariantElements(users).size() > 0) {
    tell(L"Layer is currently referenced by a layer key and cannot be deleted.", exclamationIcon);
    return false;
  }
  if (!tables_.layer.FindByIndex(counterOf(row))) return false;
  if (!isSure(L"Are you sure you want to delete layer " + grid_.text(row, name) + L"?")) return false;
  tables_.layer.Delete();
  RemoveSelectedRow(grid_);
  return true;
}

bool LayerGrid::removeUnused() {
  if (!isSure(L"Are you sure you want to delete all unused layers?")) return false;
  runStatement(tables_.engine,
               L"delete from tblLayer where ixLayer not in (select ixLayer from tblLayerKey)");
  fill();
  return true;
}

bool LayerGrid::existsElsewhere(const std::wstring& layerName, int32_t layer) {
  tables_.layer.SetIndex(L"sName");
  for (tables_.layer.MoveFirst(); !tables_.layer.IsEnd(); tables_.layer.MoveNext()) {
    if (tables_.layer.ixLayer.get() != layer && equalNoCase(tables_.layer.sName.get(), layerName))
      return true;
  }
  return false;
}

void LayerGrid::refuse(int row, const wchar_t* message, const std::wstring& former) {
  tell(message, stopIcon);
  tables_.layer.FindByIndex(counterOf(row));
  grid_.setText(row, name, former);
  grid_.grabFocus();
}

// Only the second check decides what follows. Behind a name that exists already, the cell's old name is
// written again.
bool LayerGrid::renamed(int row) {
  const std::wstring typed(trimmed(grid_.text(row, name)));
  const std::wstring former = grid_.textBeforeEdit(row, name);
  const int32_t layer = counterOf(row);
  if (existsElsewhere(typed, layer)) refuse(row, L"Layer name already exists in the database.", former);
  if (hasBadCharacter(typed)) {
    refuse(row,
           L"Invalid characters in layer name.\n\nThe following characters are not valid in layer "
           L"names:\n    < > / \\ ' \" : ; ? * | , = '",
           former);
    return false;
  }
  if (!tables_.layer.FindByIndex(layer)) return true;
  tables_.layer.Edit();
  toRecord(row);
  tables_.layer.Update();
  return true;
}

void LayerGrid::chosen(int row, int column, const std::wstring& entry) {
  if (column == color && entry == selectColor) pickColor(row);
  if (column == linetype && entry == selectLinetype) pickLinetype(row);
}

void LayerGrid::pickColor(int row) {
  ApplicationCall dialog(L"acad_colordlg");
  dialog.shortInteger(static_cast<int16_t>(colorIndex(grid_.text(row, color)))).nil();
  const bool picked = dialog.invoke() && dialog.answer() && dialog.answer()->restype == RTSHORT;
  grid_.setText(row, color, picked ? intToText(dialog.answer()->resval.rint) : cellBeforeEdit);
}

void LayerGrid::pickLinetype(int row) {
  CAcadLinetypeDialog dialog(grid_.text(row, linetype));
  const std::wstring before = cellBeforeEdit;
  grid_.setText(row, linetype, dialog.doModal() == platform::okButton ? dialog.linetype() : before);
}

void LayerGrid::save() {
  tables_.layer.SetIndex(L"ixLayer");
  for (int row = 0; row < grid_.rows(); ++row) {
    if (!tables_.layer.FindByIndex(counterOf(row))) continue;
    tables_.layer.Edit();
    toRecord(row);
    tables_.layer.Update();
  }
}

std::vector<std::wstring> LayerGrid::names() const {
  std::vector<std::wstring> all;
  for (int row = 1; row < grid_.rows(); ++row) all.push_back(grid_.text(row, name));
  return all;
}

std::vector<int64_t> LayerGrid::counters() const {
  std::vector<int64_t> all;
  for (int row = 1; row < grid_.rows(); ++row) all.push_back(counterOf(row));
  return all;
}
