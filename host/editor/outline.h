#pragma once

#include <variant>

#include "brx/db_entity.h"
#include "host/editor/plane_shapes.h"
#include "host/editor/visible_layers.h"

namespace host {

/// What an entity draws, seen from above: the pieces that picks and windows are tested against. Curves that
/// look like arcs from above are exact; others are chords, 256 to the turn.
struct Outline {
  /// An entity that drew pieces: the entity itself, or one inside of its blocks.
  struct Source {
    AcDbObjectId entity;
    AcGeMatrix3d toWorld;
    /// The references around it, from the inside out.
    std::vector<AcDbObjectId> references;
  };
  struct Piece {
    std::variant<PlaneSegment, PlaneArc, PlaneArea> shape;
    size_t source;
  };
  std::vector<Source> sources;
  std::vector<Piece> pieces;
};

/// What lies on layers that aren't visible is left out. The entity is open for read.
Outline outlineOf(AcDbEntity& entity, const VisibleLayers& layers);

}  // namespace host
