#include "host/editor/visible_layers.h"

namespace host {

VisibleLayers::VisibleLayers(AcDbDatabase& drawing) : zero_(drawing.layerZero()) {
  AcDbObjectPointer<AcDbLayerTable> table(drawing.tableId(AcDbLayerTable::desc()));
  if (!table.object()) return;
  for (const AcDbObjectId& id : table->recordIds()) {
    AcDbObjectPointer<AcDbLayerTableRecord> layer(id);
    if (!layer.object()) continue;
    states_[id.stub()] = {layer->isOff(), layer->isFrozen(), layer->isLocked()};
  }
}

VisibleLayers::State VisibleLayers::of(AcDbObjectId layer) const {
  const auto found = states_.find(layer.isNull() ? zero_.stub() : layer.stub());
  return found == states_.end() ? State{} : found->second;
}

}  // namespace host
