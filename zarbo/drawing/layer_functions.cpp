#include "brx/db_database.h"
#include "brx/db_viewport.h"
#include "zarbo/drawing/entity_functions.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/object_args.h"
#include "zarbo/support/current_drawing.h"

namespace {

using LayerTable = AcDbObjectPointer<AcDbLayerTable>;

AcDbObjectId layerTable() {
  const AcDbDatabase* const drawing = currentDatabase();
  return drawing ? drawing->tableId(AcDbLayerTable::desc()) : AcDbObjectId{};
}

/// Ids of the layers of a LISP list of names; names of no layer are left out. False for a list that holds
/// anything else.
bool getLayerIds(ArgCursor& cursor, const AcDbLayerTable& layers, AcDbObjectIdArray& ids) {
  if (cursor && cursor->restype == RTNIL) return true;
  if (!skipListBegin(cursor)) return false;
  std::wstring name;
  while (getString(cursor, name)) {
    AcDbObjectId id;
    if (layers.getAt(name.c_str(), id) == Acad::eOk) ids.append(id);
  }
  return skipListEnd(cursor);
}

}  // namespace

int kvSetPlotStyle() {
  LispArgs args;
  std::wstring layerName, styleName;
  if (!getString(args.cursor, layerName) || !getString(args.cursor, styleName)) return wrongType;
  const LayerTable layers(layerTable());
  if (layers.openStatus() != Acad::eOk) return wrongType;
  AcDbObjectId id;
  if (layers->getAt(layerName.c_str(), id) != Acad::eOk) return done;
  const AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForWrite);
  if (layer.openStatus() == Acad::eOk) layer->setPlotStyleName(styleName.c_str());
  return done;
}

int kvFreezeInViewport() {
  LispArgs args;
  AcDbObjectId id;
  bool freeze;
  if (!getObjectId(args.cursor, id) || !getFlag(args.cursor, freeze)) return wrongType;
  AcDbObjectIdArray ids(0, 8);
  {
    const LayerTable layers(layerTable());
    if (layers.openStatus() != Acad::eOk) return done;
    if (!getLayerIds(args.cursor, *layers.object(), ids)) return wrongType;
  }
  const AcDbObjectPointer<AcDbViewport> viewport(id, AcDb::kForWrite);
  if (viewport.openStatus() != Acad::eOk) return done;
  if (freeze) {
    viewport->freezeLayersInViewport(ids);
  } else {
    viewport->thawLayersInViewport(ids);
  }
  return done;
}
