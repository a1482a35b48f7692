#pragma once

#include "brx/db_database.h"
#include "host/filing/dxf_sink.h"

namespace host {

/// Writes a drawing as a drawing exchange file in text. The drawing gets what every file must hold, if
/// it lacks it, and handles for what has none. `sink` is flushed; false when a write has failed.
/// A mesh behind each entity of solids, for programs that don't know its class.
enum class DxfMeshes { none, besideSolids };
bool writeDxf(AcDbDatabase& drawing, DxfSink& sink, DxfMeshes meshes = DxfMeshes::none);

}  // namespace host
