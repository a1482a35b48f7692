#pragma once

#include <string>
#include <vector>

#include "brx/db_database.h"

namespace host {

/// Where entities stand: model space, paper spaces with their layouts, blocks.

/// The block record around an entity, through owners that are entities.
AcDbObjectId blockOf(const AcDbObject& object);
/// "Model" or the name of a paper space's layout; "" for any other block.
std::wstring layoutNameOf(AcDbObjectId block);
bool isPaperSpace(AcDbObjectId block);
/// Null when no layout has the name, case ignored.
AcDbObjectId spaceOfLayout(const AcDbDatabase& drawing, const std::wstring& layout);
/// In which entities are made, chosen and counted: model space, or the current layout's paper space where
/// TILEMODE is 0.
AcDbObjectId currentSpace(const AcDbDatabase& drawing);
/// Makes the layout's space the current one. False when no layout has the name.
bool switchToLayout(AcDbDatabase& drawing, const std::wstring& layout);
/// Model space first, then paper spaces in the order of their making.
std::vector<AcDbObjectId> spacesOf(const AcDbDatabase& drawing);

}  // namespace host
