#include "zarbo/dialogs/key_grid.h"

#include "platform/text/digits.h"
#include "zarbo/dialogs/cell_texts.h"
#include "zarbo/dialogs/system_grid.h"
#include "zarbo/frame/application_call.h"
#include "zarbo/frame/variant_values.h"
#include "zarbo/support/number_text.h"

namespace {

/// What the application says of a key; a single blank when it says nothing.
std::wstring textOfKey(const wchar_t* function, const std::wstring& sKey) {
  ApplicationCall call(function);
  call.text(sKey).invoke();
  return call.textAnswer().value_or(L" ");
}

bool isShown(const std::wstring& sKey) {
  ApplicationCall call(L"util-showLayerKey");
  return call.text(sKey).invoke() && !call.answersNil();
}

struct FoundKey {
  std::wstring counter;
  int32_t layer;
  std::wstring sKey;
};

/// Counter, layer and key stand at 2, 4 and 6 behind each mark.
std::vector<FoundKey> keysOf(const VARIANT& rows) {
  std::vector<FoundKey> keys;
  const VariantElements elements(rows);
  for (ULONG at = 0; at + 6 < elements.size(); at += 7) {
    if (elements[at].vt != VT_BSTR || viewOf(elements[at].bstrVal) != newRecordMark) break;
    keys.push_back(
        {cellText(elements[at + 2]), readInteger(cellText(elements[at + 4])), cellText(elements[at + 6])});
  }
  return keys;
}

}  // namespace

void KeyGrid::setUp() {
  constexpr const wchar_t* headers[] = {L"Layer Key", L"ixLayerKey", L"colSort", L"ixLayer", L"Layer Name"};
  for (int column = 0; column < columnCount; ++column) {
    grid_.setText(0, column, headers[column]);
    grid_.setColumnHidden(column, column != key && column != layerName);
  }
  grid_.setColumnKind(layerName, platform::CellKind::dropDownList);
  grid_.setWholeRows(true);
}

void KeyGrid::sizeColumns() {
  grid_.autoSize();
  const int half = grid_.clientWidth() / 2;
  if (grid_.columnWidth(key) > half) grid_.setColumnWidth(key, half);
}

bool KeyGrid::fill(int32_t system) {
  if (system == iShownSystem) return false;
  iShownSystem = system;
  const platform::RedrawOff quiet(grid_);
  grid_.setRowCount(1);
  const std::wstring of =
      system == SystemGrid::general ? std::wstring(L"is Null") : L"= " + intToText(system);
  COleVariant rows;
  if (!tables_.engine.executeSql(
          L"select ixLayerKey, ixLayer, sKey from tblLayerKey where ixLayerSystem " + of + L" order by sKey",
          rows)) {
    return true;
  }
  for (const FoundKey& each : keysOf(rows)) {
    ApplicationCall(L"util-layerKeySetElecGlobals").text(tables_.path()).invoke();
    if (isShown(each.sKey)) addKey(each.counter, each.layer, each.sKey);
  }
  grid_.sort(sortText);
  if (grid_.rows() > 1) grid_.setFocus(1, key);
  return true;
}

void KeyGrid::addKey(const std::wstring& ofCounter, int32_t layer, const std::wstring& sKey) {
  const int row = grid_.insertRow();
  grid_.setText(row, counter, ofCounter);
  grid_.setText(row, sortText, textOfKey(L"util-createLayerKeySortText", sKey));
  grid_.setText(row, key, textOfKey(L"util-LayerkeyRename", sKey));
  grid_.setText(row, layerCounter, intToText(layer));
  if (tables_.layer.FindByIndex(layer)) grid_.setText(row, layerName, tables_.layer.sName.get());
}

void KeyGrid::fillChoices() {
  std::vector<std::wstring> names;
  std::vector<int64_t> counters;
  tables_.layer.SetIndex(L"sName");
  for (tables_.layer.MoveFirst(); !tables_.layer.IsEnd(); tables_.layer.MoveNext()) {
    names.push_back(tables_.layer.sName.get());
    counters.push_back(tables_.layer.ixLayer.get());
  }
  if (!names.empty()) setChoices(std::move(names), std::move(counters));
}

void KeyGrid::setChoices(std::vector<std::wstring> names, std::vector<int64_t> counters) {
  grid_.setColumnChoices(layerName, std::move(names), std::move(counters));
}

void KeyGrid::renameLayer(const std::wstring& ofCounter, const std::wstring& newName) {
  for (int row = 1; row < grid_.rows(); ++row) {
    if (grid_.text(row, layerCounter) == ofCounter) grid_.setText(row, layerName, newName);
  }
}

void KeyGrid::save() {
  tables_.key.SetIndex(L"ixLayerKey");
  for (int row = 1; row < grid_.rows(); ++row) {
    const auto layer = static_cast<int32_t>(layerOf(row));
    if (layer == 0 || !tables_.key.FindByIndex(readInteger(grid_.text(row, counter)))) continue;
    tables_.key.Edit();
    tables_.key.ixLayer.set(layer);
    tables_.key.Update();
  }
}
