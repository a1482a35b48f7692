#pragma once

#include <cstdlib>

/// The next number of the process's random sequence, 0 to 32767: the range that applications are written for,
/// whatever `RAND_MAX` is here. An integer of that size reaches LISP as an integer, never as a real.
inline int drawRandom() { return std::rand() & 0x7fff; }
