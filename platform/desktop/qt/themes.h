#pragma once

class QPalette;

namespace platform {

/// Colours of the two themes in which pictures are taken.
QPalette themePalette(bool dark);

}  // namespace platform
