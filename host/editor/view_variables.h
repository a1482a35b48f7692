#pragma once

namespace host {

/// VIEWCTR, VIEWSIZE, VIEWDIR, VIEWTWIST and SCREENSIZE tell the camera of the current drawing's space.
void defineViewVariables();

}  // namespace host
