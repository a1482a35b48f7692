#pragma once

/// Bodies of the to-do queue of length one: a module-wide note of the drawing that has work waiting, which
/// survives a switch of drawings, and the sending of a command to a named drawing.

int kvExecuteToDo();
int kvSetToDoDrawing();
int kvGetToDoDrawing();
