#pragma once

#include "brx/ge_point.h"
#include "host/lisp/interpreter.h"

namespace host {

/// A list of two or three numbers; any other argument raises LISP's "bad argument type: point:".
AcGePoint3d pointArgument(const lisp::Call& call, size_t place);
AcGePoint3d pointArgument(const lisp::Value& value);
/// A list of three reals.
lisp::Value pointValue(const AcGePoint3d& point);

}  // namespace host
