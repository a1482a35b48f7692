#pragma once

#include <string>

#include "brx/lisp_calls.h"

namespace host {

/// `format` with its marks replaced by `values`, as `acutPrintf` prints it.
std::wstring formatValues(const ACHAR* format, const AcutPrintValue* values, size_t count);

}  // namespace host
