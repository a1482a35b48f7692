#pragma once

#include "brx/db_entity.h"

class AcDbText;

namespace host {

/// Appends copies of an entity as a matrix moves it, outside any database, the caller's. What the
/// entity's own class can't hold after a non-uniform scaling is given by others: ellipses for circles
/// and arcs, lines and ellipses for polylines, the contents of blocks. Texts take the scale of their
/// height and width and stay upright. What can't be given is left out and tells its status.
Acad::ErrorStatus appendTransformed(const AcDbEntity& entity, const AcGeMatrix3d& matrix,
                                    AcDbVoidPtrArray& copies);

/// Of a text that can't be transformed as it is, what can be held: its base line and its height are
/// stretched, each by its own factor.
Acad::ErrorStatus stretchText(AcDbText& text, const AcGeMatrix3d& matrix);

}  // namespace host
