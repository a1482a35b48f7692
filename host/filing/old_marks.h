#pragma once

#include "host/filing/dxf_record.h"

namespace host {

/// The record of an entity with the subclass marks that newer files have. Old files have none, and an entity
/// that is carried from one would be hollow for other readers. A record with marks is answered as it is.
DxfRecord withMarks(const DxfRecord& record);

}  // namespace host
