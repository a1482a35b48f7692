#include "zarbo/dialogs/system_grid.h"

#include <algorithm>

#include "platform/desktop/desktop.h"
#include "platform/desktop/form.h"
#include "platform/text/digits.h"
#include "zarbo/dialogs/dialog_database.h"
#include "zarbo/dialogs/new_layer_system.h"
#include "zarbo/frame/application_call.h"
#include "zarbo/support/number_text.h"
#include "zarbo/widgets/grid_rows.h"

namespace {

using namespace platform;

const std::wstring generalName = L"General";
constexpr int firstSystemRow = 2;

void tell(const std::wstring& text, unsigned style) { desktop().messageBox({L"Korvane", text, style}); }

bool isSure(const std::wstring& question) {
  return desktop().messageBox({L"Korvane", question, unsigned{yesNoBox} | unsigned{questionIcon}}) ==
         BoxAnswer::yes;
}

}  // namespace

void SystemGrid::setUp() {
  constexpr const wchar_t* headers[] = {L"", L"ixLayerSystem", L"Layer System", L"iSortOrder"};
  for (int column = 0; column < columnCount; ++column) {
    grid_.setText(0, column, headers[column]);
    grid_.setColumnHidden(column, column != name);
  }
  grid_.setWholeRows(true);
}

void SystemGrid::fill(int32_t system) {
  tables_.system.SetIndex(L"iSortOrder");
  grid_.setRowCount(firstSystemRow);
  grid_.setText(generalRow, counter, intToText(general));
  grid_.setText(generalRow, name, generalName);
  for (tables_.system.MoveFirst(); !tables_.system.IsEnd(); tables_.system.MoveNext()) {
    const int row = grid_.insertRow();
    grid_.setText(row, counter, intToText(tables_.system.ixLayerSystem.get()));
    grid_.setText(row, name, tables_.system.sDescription.get());
    grid_.setText(row, sortOrder, intToText(tables_.system.iSortOrder.get()));
    if (system != general && system == tables_.system.ixLayerSystem.get()) grid_.setFocus(row, name);
  }
  if (system == general) grid_.setFocus(generalRow, name);
  grid_.autoSize();
}

int32_t SystemGrid::counterOf(int row) const { return readInteger(grid_.text(row, counter)); }

int32_t SystemGrid::selected() const { return counterOf(grid_.focusRow()); }

int32_t SystemGrid::largestSortOrder() const {
  int32_t largest = 0;
  for (int row = generalRow; row < grid_.rows(); ++row) {
    largest = std::max(largest, readInteger(grid_.text(row, sortOrder)));
  }
  return largest;
}

bool SystemGrid::make() {
  CNewLayerSystem dialog(grid_, name);
  if (dialog.doModal() != okButton) return false;
  const int32_t source = counterOf(dialog.source() + firstSystemRow);
  tables_.system.AddNew();
  tables_.system.sDescription.set(dialog.name());
  tables_.system.iSortOrder.set(largestSortOrder() + 1);
  tables_.system.Update();
  const int32_t made = tables_.system.ixLayerSystem.get();
  runStatement(tables_.engine,
               L"insert into tblLayerKey(ixLayerSystem, ixLayer, sKey) select " + intToText(made) +
                   L", ixLayer, sKey from tblLayerKey where ixLayerSystem = " + intToText(source));
  ApplicationCall(L"util-createPipeLabels").longInteger(made).longInteger(source).invoke();
  // Its place is written by OK: until then two new systems share a number.
  const int row = grid_.insertRow();
  grid_.setText(row, counter, intToText(made));
  grid_.setText(row, name, dialog.name());
  grid_.setFocus(row, name);
  return true;
}

void SystemGrid::move(int by) {
  const int row = grid_.focusRow(), target = row + by;
  if (row < firstSystemRow || target < firstSystemRow || target >= grid_.rows()) return;
  grid_.swapRows(row, target);
  grid_.setFocus(target, name);
}

void SystemGrid::edit(int row) {
  if (row == generalRow) {
    tell(L"The general layer system cannot be edited.", informationIcon);
    return grid_.setText(generalRow, name, generalName);
  }
  const int32_t system = counterOf(row);
  ApplicationCall(L"util-layersystemoptions").longInteger(system).text(tables_.path()).invoke();
  tables_.system.FindByIndex(system);
  grid_.setText(row, name, tables_.system.sDescription.get());
}

bool SystemGrid::mayBeRemoved(int row) {
  constexpr int fewestRows = 3;
  if (grid_.rows() <= fewestRows) {
    tell(L"You cannot delete the last layer system.", informationIcon);
    return false;
  }
  if (row == generalRow) {
    tell(L"The general layer system cannot be deleted.", informationIcon);
    return false;
  }
  if (!tables_.isNamed) {
    ApplicationCall check(L"util-checkObjectsforLayersystem");
    check.longInteger(counterOf(row)).invoke();
    if (const auto objection = check.textAnswer()) {
      tell(*objection, questionIcon);
      return false;
    }
  }
  return isSure(L"Are you sure you want to delete layer system " + grid_.text(row, name) + L"?");
}

// The keys go before the system.
void SystemGrid::remove() {
  const int row = grid_.focusRow();
  if (!mayBeRemoved(row)) return;
  const std::wstring system = intToText(counterOf(row));
  runStatement(tables_.engine, L"delete from tblLayerKey where ixLayerSystem = " + system);
  ApplicationCall(L"util-deletePipeLabels").longInteger(counterOf(row)).invoke();
  runStatement(tables_.engine, L"delete from tblLayerSystem where ixLayerSystem = " + system);
  RemoveSelectedRow(grid_);
}

// Header and `General` find nothing, so that the first system has the number of its row, 2.
void SystemGrid::save() {
  for (int row = 0; row < grid_.rows(); ++row) {
    if (!tables_.system.FindByIndex(counterOf(row))) continue;
    tables_.system.Edit();
    tables_.system.sDescription.set(grid_.text(row, name));
    tables_.system.iSortOrder.set(row);
    tables_.system.Update();
  }
}
