#pragma once

#include "host/access/list_reader.h"

class AcDbDatabase;

namespace host {

/// Judges what a list says before an object is touched. All throw ObjectRefusal.

/// The groups without which there is no object of the type.
void requireNeeded(std::wstring_view type, const ListGroups& groups);
/// Ranges of values, and names of linetypes, styles and blocks that the drawing must have.
void requireSuitable(std::wstring_view type, const ListGroups& groups, const AcDbDatabase& drawing);

}  // namespace host
