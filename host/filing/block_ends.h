#pragma once

#include "host/filing/dxf_objects.h"
#include "host/filing/dxf_sink.h"

namespace host {

/// In files a block stands between two entities that have handles and a layer of their own. What the
/// block's record has no place for is kept with it.

void readBlockBegin(const DxfRecord& record, AcDbBlockTableRecord& block, DxfObjects& objects);
void readBlockEnd(const DxfRecord& record, AcDbBlockTableRecord& block, DxfObjects& objects);

/// Gives both ends of a block handles if they have none yet.
void prepareBlockEnds(AcDbBlockTableRecord& block);
void writeBlockBegin(const AcDbBlockTableRecord& block, DxfSink& sink);
void writeBlockEnd(const AcDbBlockTableRecord& block, DxfSink& sink);

}  // namespace host
