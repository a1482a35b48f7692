#pragma once

class AcDbDatabase;

namespace host {

/// Adds what a drawing can't be without and this one lacks: standard layer, linetypes, styles,
/// applications, spaces with their layouts, the root dictionary and those that it must hold.
void completeDrawing(AcDbDatabase& drawing);
/// The records of symbol tables among them.
void completeTables(AcDbDatabase& drawing);
/// The linetypes alone, which layers refer to.
void completeLinetypes(AcDbDatabase& drawing);

}  // namespace host
