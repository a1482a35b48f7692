#pragma once

#include "host/lisp/interpreter.h"

namespace host {

class Player;

/// Gives LISP `host-window`, which lays a deed ready for the player, and its fellows.
void defineWindowFunctions(lisp::Interpreter& interpreter, Player& player);

}  // namespace host
