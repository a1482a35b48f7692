#pragma once

#include <string>

#include "brx/db_ids.h"

namespace host {

/// Blocks of the current drawing by name.

/// Null when there is none.
AcDbObjectId findBlock(const std::wstring& name);
/// "name", "name=file" or a file's name: the block, which is made from the drawing file "name.dwg" of the
/// support path when the drawing hasn't got it. Null with `problem` set when there is neither.
AcDbObjectId findOrLoadBlock(const std::wstring& name, std::wstring& problem);

}  // namespace host
