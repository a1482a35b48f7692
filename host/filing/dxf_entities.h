#pragma once

#include "host/filing/dxf_objects.h"
#include "host/filing/dxf_walk.h"

namespace host {

/// Makes a record for each block of the section that the tables lack, as old files have it, so that
/// references find them.
void readDxfBlockNames(DxfWalk& walk, DxfObjects& objects);
/// The blocks with their entities.
void readDxfBlocks(DxfWalk& walk, DxfObjects& objects);
/// The entities of model space and of the current paper space.
void readDxfEntities(DxfWalk& walk, DxfObjects& objects);

}  // namespace host
