#pragma once

#include <string>

#include "brx/db_ids.h"

/// Records of the current drawing's tables by name; null where there is none.

AcDbObjectId findTextStyle(const std::wstring& name);
AcDbObjectId findLayer(const std::wstring& name);
