#include "zarbo/dialogs/layer_customization.h"

#include <algorithm>

#include "brx/lisp_calls.h"
#include "platform/text/trim.h"
#include "zarbo/database/connections.h"
#include "zarbo/dialogs/customization_functions.h"
#include "zarbo/dialogs/dialog_database.h"
#include "zarbo/frame/application_call.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"
#include "zarbo/widgets/dialog.h"

using namespace platform;

CLayerCustomization::CLayerCustomization(Engine engine, bool isNamed)
    : tables_(std::move(engine), isNamed),
      form_(L"Layers", L"kv_zarbo:LayerCustomization"),
      systems_(form_.addGrid(SystemGrid::control, SystemGrid::columnCount, 1, 1), tables_),
      keys_(form_.addGrid(KeyGrid::control, KeyGrid::columnCount), tables_),
      layers_(form_.addGrid(LayerGrid::control, LayerGrid::columnCount), tables_) {
  addControls();
  layOut();
  hear();
  form_.onStart = [this] { start(); };
}

int CLayerCustomization::doModal() { return runModuleDialog(form_); }

void CLayerCustomization::addControls() {
  form_.addButton(moveUp, L"Move &Up", [this] { systems_.move(-1); });
  form_.addButton(moveDown, L"Move Do&wn", [this] { systems_.move(1); });
  form_.addButton(newSystem, L"New &System", [this] { makeSystem(); });
  form_.addButton(editSystem, L"&Edit System", [this] { systems_.edit(systems_.grid().focusRow()); });
  form_.addButton(deleteSystem, L"D&elete System", [this] { systems_.remove(); });
  form_.addButton(importLayers, L"&Import Layers from Excel", [this] { importFromFile(); });
  form_.addButton(exportLayers, L"E&xport Layers to Excel", [this] { exportToFile(); });
  form_.addButton(newLayer, L"&New Layer", [this] {
    layers_.add();
    keys_.fillChoices();
    layers_.grid().setFocus(layers_.grid().focusRow(), LayerGrid::name);
  });
  form_.addButton(deleteLayer, L"&Delete Layer", [this] {
    if (layers_.remove()) keys_.fillChoices();
  });
  form_.addButton(deleteUnused, L"Delete &All Unused Layers", [this] {
    if (layers_.removeUnused()) keys_.fillChoices();
  });
  form_.addButton(undoLayers, L"&Undo Layer Changes", [this] { layers_.fill(); });
  // It reads nothing as long as the same system is selected, and so changes nothing. It is meant so.
  form_.addButton(undoKeys, L"Undo Layer &Key Changes", [this] { keys_.fill(systems_.selected()); });
  form_.addOkAndCancel();
  form_.control(okButton).onPress = [this] {
    write();
    form_.close();
  };
}

void CLayerCustomization::layOut() {
  form_.control(SystemGrid::control).size(24, 22).grow(2);
  form_.control(KeyGrid::control).size(42, 22).grow(3);
  form_.control(LayerGrid::control).size(96, 22).grow(5);
  form_.setLayout(column({
      row({
          column({SystemGrid::control, row({moveUp, moveDown}), row({newSystem, editSystem}),
                  row({deleteSystem, space()})}),
          column({KeyGrid::control, row({undoKeys, space()}), row({importLayers, exportLayers})}),
          column({LayerGrid::control, row({newLayer, deleteLayer, space()}),
                  row({deleteUnused, undoLayers, space()})}),
      }),
      okAndCancel(),
  }));
  form_.setFocus(SystemGrid::control);
}

void CLayerCustomization::hear() {
  Grid& systems = systems_.grid();
  systems.onBeginEdit = [this](int row, int) {
    systems_.edit(row);
    return false;
  };
  systems.onSelectionChanged = [this](int row) { systemSelected(row); };

  Grid& keys = keys_.grid();
  keys.onBeginEdit = [](int, int column) { return column != KeyGrid::key; };
  keys.onSelectionChanged = [this](int row) {
    iKeyRow = row;
    showLayerOfKey(row);
  };
  keys.onChoice = [this](int, int, const std::wstring& text) { layers_.showByName(text); };

  Grid& layers = layers_.grid();
  layers.onEndEdit = [this](int row, int column) {
    if (column == LayerGrid::name) layerRenamed(row);
  };
  layers.onChoice = [this](int row, int column, const std::wstring& text) {
    layers_.chosen(row, column, text);
  };
}

void CLayerCustomization::start() {
  systems_.setUp();
  keys_.setUp();
  layers_.setUp();
  keys_.fillChoices();
  layers_.fill();
  systems_.fill();
  if (keys_.fill(systems_.selected())) showLayerOfKey(1);
  keys_.sizeColumns();
  enableMoves();
}

void CLayerCustomization::enableMoves() {
  const bool isSystem = systems_.grid().focusRow() != SystemGrid::generalRow;
  form_.control(moveUp).setEnabled(isSystem);
  form_.control(moveDown).setEnabled(isSystem);
}

void CLayerCustomization::showLayerOfKey(int row) {
  if (row > 0 && row < keys_.grid().rows()) layers_.show(keys_.layerOf(row));
}

/// The same place in the list of keys stays in view from system to system.
void CLayerCustomization::systemSelected(int) {
  const int place = iKeyRow;
  keys_.save();
  if (keys_.fill(systems_.selected())) showLayerOfKey(1);
  enableMoves();
  Grid& keys = keys_.grid();
  const int count = keys.rows();
  if (place > 0 && place < count) {
    keys.setFocus(place, KeyGrid::counter);
    keys.scrollTo(place, KeyGrid::key);
    return showLayerOfKey(place);
  }
  constexpr int rowsInView = 5, manyRows = 11, firstRows = 2;
  keys.setFocus(count - 1, KeyGrid::counter);
  showLayerOfKey(count - 1);
  keys.scrollTo(count >= manyRows ? count - rowsInView : firstRows, KeyGrid::key);
}

void CLayerCustomization::makeSystem() {
  if (!systems_.make()) return;
  keys_.save();
  if (keys_.fill(systems_.selected())) showLayerOfKey(1);
  enableMoves();
}

void CLayerCustomization::exportToFile() {
  keys_.save();
  ApplicationCall(L"util-exportLayerSystem-noName")
      .shortInteger(static_cast<int16_t>(systems_.selected()))
      .text(tables_.path())
      .invoke();
}

void CLayerCustomization::importFromFile() {
  ApplicationCall call(L"util-importLayerSystem-noName");
  call.shortInteger(static_cast<int16_t>(systems_.selected())).text(tables_.path());
  if (!call.invoke() || call.answersNil()) return;
  keys_.forgetSystem();
  layers_.fill();
  keys_.fillChoices();
  if (keys_.fill(systems_.selected())) showLayerOfKey(1);
}

void CLayerCustomization::layerRenamed(int row) {
  Grid& grid = layers_.grid();
  const std::wstring typed(trimmed(grid.text(row, LayerGrid::name)));
  if (!layers_.renamed(row)) return;
  // Also behind a name that was refused since it exists: such rows show it until they are filled again.
  keys_.renameLayer(grid.text(row, LayerGrid::counter), typed);
  keys_.setChoices(layers_.names(), layers_.counters());
}

void CLayerCustomization::write() {
  systems_.save();
  keys_.save();
  layers_.save();
  if (keys_.fill(systems_.selected())) showLayerOfKey(1);
}

int kvCustomizeLayers() {
  acedRetNil();
  LispArgs args;
  std::wstring path;
  const bool isNamed = getString(args.cursor, path);
  if (!isNamed && activeConnection()) path = activeConnection().databaseName();
  PrivateDatabase database;
  if (!database || !database.open(path, printFailure)) return done;
  const ModuleResources resources;
  CLayerCustomization(database.engine(), isNamed).doModal();
  return done;
}
