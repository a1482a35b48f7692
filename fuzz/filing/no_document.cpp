// What the module asks of a host with documents; here there are none.
#include "zarbo/drawing/block_lookup.h"
#include "zarbo/drawing/model_space.h"
#include "zarbo/support/current_drawing.h"

AcDbDatabase* currentDatabase() { return nullptr; }
bool lookUpBlock(const std::wstring&, AcDbObjectId&) { return false; }
bool appendAndClose(AcDbEntity*) { return false; }
