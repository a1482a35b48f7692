#pragma once

/// Bodies of the module-wide note of the drawing that has work waiting. It survives a switch of
/// drawings; nothing here acts on it.

int kvSetToDoDrawing();
int kvGetToDoDrawing();
