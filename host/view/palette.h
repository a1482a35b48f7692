#pragma once

#include <cstdint>

namespace host::view {

/// 0xRRGGBB of a colour index from 1 to 255. Index 7 is the contrast of the ground, told here as white.
std::uint32_t colourOfIndex(unsigned index);

}  // namespace host::view
