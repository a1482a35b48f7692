#pragma once

#include "brx/db_block.h"

/// Paints what a block holds, entity by entity, so that the drag image of a reference that is in no drawing
/// shows its texts and layers as they will be.
///
/// Entities on layer "0" are drawn on `layer` where it isn't null. When a picture is saved for proxies
/// (`kAcGiSaveWorldDrawForProxy`) and `keepTransforms` is false, no transform is pushed: copies of the
/// entities are drawn in their places, and only there `parent` counts.
void drawBlock(const AcDbBlockReference& reference, AcGiWorldDraw& context, const AcDbObjectId& layer,
               bool keepTransforms, const AcGeMatrix3d& parent);
