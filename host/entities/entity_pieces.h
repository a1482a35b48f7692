#pragma once

#include <vector>

#include "brx/db_ellipse.h"
#include "host/geometry/curve_piece.h"

namespace host {

EllipseArc arcOf(const AcDbEllipse& ellipse);

/// Lines, arcs, ellipses and splines of an entity, through blocks and whatever else explodes. With
/// `extend` open curves go on beyond their ends. Texts have none.
std::vector<CurvePiece> piecesOf(const AcDbEntity& entity, bool extend);

}  // namespace host
