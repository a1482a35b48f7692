#include "host/view/overlay.h"

#include <algorithm>

namespace host::view {

void PixelBox::join(const PixelBox& o) {
  if (o.empty()) return;
  if (empty()) {
    *this = o;
    return;
  }
  left = std::min(left, o.left), top = std::min(top, o.top);
  right = std::max(right, o.right), bottom = std::max(bottom, o.bottom);
}
PixelBox PixelBox::cutTo(const PixelBox& o) const {
  return {std::max(left, o.left), std::max(top, o.top), std::min(right, o.right), std::min(bottom, o.bottom)};
}

}  // namespace host::view
