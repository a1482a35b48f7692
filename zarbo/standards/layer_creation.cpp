#include "zarbo/standards/layer_creation.h"

#include <memory>

#include "brx/db_database.h"
#include "platform/text/digits.h"
#include "platform/text/letters.h"
#include "zarbo/database/connections.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"
#include "zarbo/standards/layer_records.h"
#include "zarbo/support/current_drawing.h"

namespace {

/// Stands for the drawing's default, in any case of letters.
constexpr const wchar_t* defaultLinetype = L"CONTINUOUS";

template <class Table>
AcDbObjectId tableId(AcDbDatabase& drawing) {
  return drawing.tableId(Table::desc());
}

// False when the drawing's linetypes can't be read. One that the drawing lacks leaves the layer's default.
bool setLinetype(AcDbLayerTableRecord& layer, const tblLayer& row, AcDbDatabase& drawing) {
  if (upperCased(row.sLinetype.get()) == defaultLinetype) return true;
  const AcDbObjectPointer<AcDbLinetypeTable> linetypes(tableId<AcDbLinetypeTable>(drawing));
  if (!linetypes.object()) return false;
  AcDbObjectId linetype;
  if (linetypes->getAt(row.sLinetype.get().c_str(), linetype) == Acad::eOk)
    layer.setLinetypeObjectId(linetype);
  return true;
}

/// Null when the drawing's linetypes can't be read.
std::unique_ptr<AcDbLayerTableRecord> layerOfRow(const tblLayer& row, AcDbDatabase& drawing) {
  auto layer = std::make_unique<AcDbLayerTableRecord>();
  int32_t index = 0;
  if (row.iColor.get(index)) {
    AcCmColor color;
    color.setColorIndex(static_cast<Adesk::UInt16>(index));
    layer->setColor(color);
  }
  layer->setName(row.sName.get().c_str());
  layer->setIsPlottable(row.bPlot.get());
  if (!setLinetype(*layer, row, drawing)) return nullptr;
  std::wstring lineweight;
  if (row.sLineweight.get(lineweight) && !lineweight.empty()) layer->setLineWeight(readInteger(lineweight));
  return layer;
}

bool addLayer(AcDbLayerTable& layers, const tblLayer& row, AcDbDatabase& drawing) {
  std::unique_ptr<AcDbLayerTableRecord> layer = layerOfRow(row, drawing);
  if (!layer || layers.upgradeOpen() != Acad::eOk) return false;
  const bool added = layers.add(layer.get()) == Acad::eOk;
  if (added) {
    AcDbLayerTableRecord* const resident = layer.release();
    // Only a layer of a drawing can have a plot style.
    std::wstring plotStyle;
    if (row.sPlotstyle.get(plotStyle)) resident->setPlotStyleName(plotStyle.c_str());
    resident->close();
  }
  layers.downgradeOpen();
  return added;
}

// A layer that is there is only unlocked: the standards don't overwrite what the drawing has.
void unlock(AcDbObjectId id) {
  const AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForWrite);
  if (layer.object()) layer->setIsLocked(false);
}

bool ensureLayer(const std::wstring& name, AcDbDatabase& drawing) {
  const AcDbObjectPointer<AcDbLayerTable> layers(tableId<AcDbLayerTable>(drawing));
  if (!layers.object()) return false;
  AcDbObjectId id;
  if (layers->getAt(name.c_str(), id) == Acad::eOk) {
    unlock(id);
    return true;
  }
  const Engine& standards = activeConnection();
  tblLayer row(true, standards ? &standards.object() : nullptr);
  return row.FindByKey(name) && addLayer(*layers.object(), row, drawing);
}

}  // namespace

int kvCreateLayer() {
  acedRetNil();
  LispArgs args;
  std::wstring name;
  if (!getString(args.cursor, name)) return wrongType;
  AcDbDatabase* const drawing = currentDatabase();
  if (drawing && ensureLayer(name, *drawing)) acedRetT();
  return done;
}
