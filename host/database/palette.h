#pragma once

#include <cstdint>

namespace host {

/// 0xRRGGBB of a colour index from 1 to 255. Index 7 is the contrast of the ground, told here as white.
std::uint32_t colourOfIndex(unsigned index);

/// The index from 1 to 255 whose colour is nearest to 0xRRGGBB, the lowest of equals.
unsigned nearestIndex(std::uint32_t rgb);

}  // namespace host
