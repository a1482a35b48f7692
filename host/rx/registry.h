#pragma once

#include <string_view>

#include "brx/rx_object.h"

namespace host {

/// Registered classes by run-time name or by the name that stands in drawing files; null when there
/// is none (any more).
AcRxClass* findClass(std::wstring_view name);
AcRxClass* findClassByDxfName(std::wstring_view dxfName);

}  // namespace host
