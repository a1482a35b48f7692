#pragma once

#include "brx/ge_matrix.h"

namespace host {

/// From the user coordinate system of the current drawing to the world's.
AcGeMatrix3d userSystem();
/// From the screen's system to the world's: Z towards the viewer, turned by the view's twist.
AcGeMatrix3d displaySystem();

}  // namespace host
