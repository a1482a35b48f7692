#pragma once

#include "host/database/stubs.h"
#include "host/filing/dxf_sink.h"

namespace host {

/// Tells the classes that not every program knows: those that came with a file, and those of modules of
/// which the drawing has objects.
void writeDxfClasses(const AcDbDatabase& drawing, DxfSink& sink);

}  // namespace host
