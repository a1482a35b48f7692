#pragma once

#include <string_view>

#include "brx/ge_point.h"

namespace host {

/// The host's variables as the window reads them; `otherwise` for one of another type.
int intVariable(std::wstring_view name, int otherwise);
double realVariable(std::wstring_view name, double otherwise);
/// LASTPOINT.
AcGePoint3d lastPoint();
/// Of a variable that is 0 or 1, or of one bit of a variable.
void toggleVariable(std::wstring_view name, int bit = 1);

}  // namespace host
