#pragma once

#include <functional>
#include <variant>

#include "brx/db_entity.h"
#include "host/editor/plane_shapes.h"
#include "host/editor/visible_layers.h"
#include "host/view/view.h"

namespace host {

/// What entities draw, in the plane of a view: the pieces that picks and windows are tested against. Curves
/// that look like arcs from there are exact; others are chords, 256 to the turn.
using OutlinePiece = std::variant<PlaneSegment, PlaneArc, PlaneArea>;

/// The entity that drew a piece: the one asked for itself, or one inside of its blocks.
struct OutlineSource {
  AcDbObjectId entity;
  AcGeMatrix3d toWorld;
  /// The references around it, from the inside out.
  std::vector<AcDbObjectId> references;
};

/// Gives the pieces one by one until `visit` answers false; a piece's source is worked out when it is asked
/// for. What lies on layers that aren't visible is left out. The entity is open for read.
using VisitOutlinePiece =
    std::function<bool(const OutlinePiece& piece, const std::function<OutlineSource()>& source)>;
void forEachOutlinePiece(AcDbEntity& entity, const VisibleLayers& layers, const view::Projection& projection,
                         const VisitOutlinePiece& visit);

}  // namespace host
