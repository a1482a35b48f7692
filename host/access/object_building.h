#pragma once

#include <memory>

#include "brx/db_database.h"
#include "host/access/list_reader.h"

namespace host {

/// Objects of what lists say, outside of any database. All throw ObjectRefusal.

/// The class of a list's type, which is in capitals. Polylines are told apart by their flags, vertices by
/// the polyline that they are for (null elsewhere).
AcRxClass& classOfList(std::wstring_view type, const ListGroups& groups, const AcDbEntity* owner = nullptr);
/// A new object, filled and with its extended data. What a list leaves out are the drawing's current
/// properties. A layer that the drawing lacks is made.
std::unique_ptr<AcDbObject> buildObject(AcDbDatabase& drawing, std::wstring_view type,
                                        const ListGroups& groups, const AcDbEntity* owner = nullptr);
/// Gives an object what the list says, and an aligned text its place by the font's measures.
void fillObject(AcDbObject& object, ListReader& reader);
/// Makes the layer of the list unless the drawing has it.
void provideLayer(AcDbDatabase& drawing, const ListGroups& groups);
/// Sets the extended data of a list's -3, if it has one.
void takeXdata(AcDbObject& object, const ListGroups& groups);

}  // namespace host
