#include "host/database/palette.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "brx/db_entity.h"

namespace host {
namespace {

constexpr std::uint32_t named[] = {0x000000, 0xFF0000, 0xFFFF00, 0x00FF00, 0x00FFFF,
                                   0x0000FF, 0xFF00FF, 0xFFFFFF, 0x808080, 0xC0C0C0};
constexpr std::uint32_t greys[] = {0x333333, 0x505050, 0x696969, 0x828282, 0xBEBEBE, 0xFFFFFF};

/// Red, green or blue of a full hue; `turn` counts 24 steps around the circle from the channel's own hue.
double channelOfHue(int turn) {
  const int distance = turn > 12 ? 24 - turn : turn;
  return distance <= 4 ? 1 : distance >= 8 ? 0 : (8 - distance) / 4.0;
}

std::uint32_t channel(double hue, double value, bool pale) {
  return static_cast<std::uint32_t>(std::floor((pale ? 0.5 + hue / 2 : hue) * value));
}

}  // namespace

/// 24 hues of ten colours each: five steps of brightness, each full and pale.
std::uint32_t colourOfIndex(unsigned index) {
  if (index < 10) return named[index];
  if (index >= 250) return greys[index > 255 ? 5 : index - 250];
  constexpr double brightness[] = {255, 165, 127, 76, 38};
  const int hue = static_cast<int>(index / 10) - 1;
  const double value = brightness[index % 10 / 2];
  const bool pale = index % 2 == 1;
  const std::uint32_t red = channel(channelOfHue(hue), value, pale);
  const std::uint32_t green = channel(channelOfHue((hue + 16) % 24), value, pale);
  const std::uint32_t blue = channel(channelOfHue((hue + 8) % 24), value, pale);
  return red << 16 | green << 8 | blue;
}

namespace {

std::array<std::uint32_t, 256> wholePalette() {
  std::array<std::uint32_t, 256> all{};
  for (unsigned index = 0; index < all.size(); ++index) all[index] = colourOfIndex(index);
  return all;
}

int difference(std::uint32_t a, std::uint32_t b) {
  int sum = 0;
  for (const int shift : {16, 8, 0}) {
    const int apart = static_cast<int>(a >> shift & 0xFF) - static_cast<int>(b >> shift & 0xFF);
    sum += apart * apart;
  }
  return sum;
}

}  // namespace

unsigned nearestIndex(std::uint32_t rgb) {
  static const std::array<std::uint32_t, 256> palette = wholePalette();
  const auto isNearer = [rgb](std::uint32_t a, std::uint32_t b) {
    return difference(a, rgb) < difference(b, rgb);
  };
  return static_cast<unsigned>(std::min_element(palette.begin() + 1, palette.end(), isNearer) -
                               palette.begin());
}

}  // namespace host

Adesk::UInt16 AcCmColor::nearestIndex() const { return static_cast<Adesk::UInt16>(host::nearestIndex(rgb_)); }
