#pragma once

#include <string>

#include "brx/db_ids.h"

/// Finds the block of the current drawing; one that it lacks is made from "name.dwg" on the host's search
/// path. When that isn't there either, the application's `kvBlock-alertMissing` is called with the name and
/// the answer is false.
bool lookUpBlock(const std::wstring& name, AcDbObjectId& block);
