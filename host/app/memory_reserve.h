#pragma once

namespace host {

/// Holds back some memory until all other is used up. When that happens, the reserve is given free for the
/// program to go on with, and the running LISP ends with an error at its next step; the drawing can be saved.
/// Called at the start and between evaluations, by which the reserve is there again as soon as it can be had.
void holdMemoryReserve();

}  // namespace host
