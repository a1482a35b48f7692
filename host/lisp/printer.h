#pragma once

#include <string>

#include "host/lisp/value.h"

namespace lisp {

/// `readable` is how `prin1` writes, so that `read` gets the value back; `plain` is `princ`.
enum class Style { readable, plain };

std::wstring printed(const Value& value, Style style);
/// Six significant digits, always with a point or an exponent.
std::wstring printedReal(double value);

}  // namespace lisp
