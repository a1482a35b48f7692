#pragma once

#include <string>

#include "platform/desktop/form.h"
#include "zarbo/dialogs/key_grid.h"
#include "zarbo/dialogs/layer_grid.h"
#include "zarbo/dialogs/standards_tables.h"
#include "zarbo/dialogs/system_grid.h"

/// The layers of a standards database: its systems, the keys of the selected one with their layers, and the
/// layers themselves, in three grids that follow one another. New, renamed and deleted rows are in the
/// database at once; the rest is written by OK.
class CLayerCustomization {
 public:
  /// `isNamed`: the database was named by the caller and isn't the drawing's own.
  CLayerCustomization(Engine engine, bool isNamed);
  int doModal();

 private:
  enum Control {
    moveUp = 1054,
    moveDown = 1055,
    newSystem = 1058,
    editSystem = 1062,
    deleteSystem = 1059,
    importLayers = 1064,
    exportLayers = 1053,
    newLayer = 1060,
    deleteLayer = 1057,
    deleteUnused = 1080,
    undoLayers = 1061,
    undoKeys = 1063,
  };

  void addControls();
  void layOut();
  void hear();
  void start();
  void enableMoves();

  void systemSelected(int row);
  void makeSystem();
  void exportToFile();
  void importFromFile();
  void showLayerOfKey(int row);
  void layerRenamed(int row);
  void write();

  StandardsTables tables_;
  platform::Form form_;
  SystemGrid systems_;
  KeyGrid keys_;
  LayerGrid layers_;
  /// The current row of the keys' grid.
  int iKeyRow = 1;
};
