#include "host/view/thin_lines.h"

#include <algorithm>
#include <cmath>

namespace host::view {
namespace {

/// The part of the unit from `cell` on that lies between two places.
double overlap(double from, double to, double cell) {
  return std::max(0.0, std::min(to, cell + 1) - std::max(from, cell));
}

}  // namespace

void ThinLines::blend(int x, int y, std::uint32_t rgb, double coverage) {
  const auto share = static_cast<std::uint32_t>(coverage * 256 + 0.5);
  if (share == 0) return;
  std::uint32_t& pixel =
      rows_.data[static_cast<size_t>(y) * static_cast<size_t>(rows_.width) + static_cast<size_t>(x)];
  if (share >= 256) {
    pixel = 0xFF000000u | rgb;
    return;
  }
  constexpr std::uint32_t redAndBlue = 0xFF00FF, green = 0x00FF00;
  const std::uint32_t rest = 256 - share;
  const std::uint32_t outer = ((pixel & redAndBlue) * rest + (rgb & redAndBlue) * share) >> 8 & redAndBlue;
  const std::uint32_t inner = ((pixel & green) * rest + (rgb & green) * share) >> 8 & green;
  pixel = 0xFF000000u | outer | inner;
}

void ThinLines::dot(const PlanePoint& at, std::uint32_t rgb) {
  const PixelBox& clip = rows_.clip;
  const double x = std::floor(at.x), y = std::floor(at.y);
  if (!(x >= clip.left && x < clip.right && y >= clip.top && y < clip.bottom)) return;
  blend(static_cast<int>(x), static_cast<int>(y), rgb, 1);
}

/// Along the axis on which it goes farther, step by step; across it the line is a short run of one length.
void ThinLines::line(const PlanePoint& from, const PlanePoint& to, std::uint32_t rgb, double width,
                     double opacity, double cap) {
  double dx = to.x - from.x, dy = to.y - from.y;
  const bool steep = std::abs(dy) > std::abs(dx);
  // From here on u runs along and v across.
  double u0 = steep ? from.y : from.x, v0 = steep ? from.x : from.y, u1 = steep ? to.y : to.x;
  double du = steep ? dy : dx, dv = steep ? dx : dy;
  if (du < 0) {
    std::swap(u0, u1);
    v0 = steep ? to.x : to.y;
    du = -du, dv = -dv;
  }
  const double slope = du > 0 ? dv / du : 0, stretch = std::sqrt(1 + slope * slope);
  const double half = width * stretch / 2, reach = cap / stretch;
  const double start = u0 - reach, end = u1 + reach;
  const PixelBox& clip = rows_.clip;
  const double lowU = steep ? clip.top : clip.left, highU = steep ? clip.bottom : clip.right;
  const int lowV = steep ? clip.left : clip.top, highV = steep ? clip.right : clip.bottom;
  double first = std::max(lowU, std::floor(start)), last = std::min(highU - 1, std::ceil(end) - 1);
  if (!(first <= last)) return;
  // Steps at which the line is beside the clip are passed over.
  if (slope != 0) {
    const double a = u0 + (lowV - 1 - half - v0) / slope, b = u0 + (highV + 1 + half - v0) / slope;
    first = std::max(first, std::floor(std::min(a, b)) - 1),
    last = std::min(last, std::ceil(std::max(a, b)) + 1);
    if (!(first <= last)) return;
  } else if (v0 + half < lowV || v0 - half > highV) {
    return;
  }
  for (int u = static_cast<int>(first); u <= static_cast<int>(last); ++u) {
    const double middle = v0 + slope * (std::clamp(u + 0.5, start, end) - u0);
    const double along = overlap(start, end, u) * opacity;
    const double low = middle - half, high = middle + half;
    const int firstV = std::max(lowV, static_cast<int>(std::floor(low)));
    const int lastV = std::min(highV - 1, static_cast<int>(std::ceil(high)) - 1);
    for (int v = firstV; v <= lastV; ++v) {
      const double coverage = along * overlap(low, high, v);
      steep ? blend(v, u, rgb, coverage) : blend(u, v, rgb, coverage);
    }
  }
}

}  // namespace host::view
