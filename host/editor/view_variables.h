#pragma once

namespace host {

/// VIEWCTR, VIEWSIZE, VIEWDIR, VIEWTWIST and SCREENSIZE tell the camera of the current drawing's space, and
/// set it: a view that is set is a step that ZOOM Previous takes back. SCREENSIZE is a window's own where
/// there is one.
void defineViewVariables();

}  // namespace host
