#pragma once

#include "host/view/depth_buffer.h"
#include "host/view/painter.h"

namespace host::view {

/// How much faces cover: nothing, what lies behind them, or that and they are seen in their light.
enum class Visual { wires, hidden, shaded };

/// What is seen when faces hide what lies behind them. First all faces are added, then lists are asked for
/// one after another.
class HiddenView {
 public:
  /// `window` is the part of the plane that a picture of `width` by `height` shows; what is kept is finer.
  HiddenView(const Projection& projection, const PlaneBox& window, int width, int height, Ground ground);

  void addFaces(const DisplayList& list, std::uint32_t first, std::uint32_t count);
  bool hasFaces() const { return hasFaces_; }
  /// Lines as far as they are seen, and no faces; `seen` is overwritten.
  void seenOf(const DisplayList& list, std::uint32_t first, std::uint32_t count, DisplayList& seen) const;
  /// The faces in their light.
  Backdrop faces() const { return {&buffer_.pixels(), buffer_.width(), buffer_.height()}; }

 private:
  Ground ground_;
  DepthBuffer buffer_;
  bool hasFaces_ = false;
};

}  // namespace host::view
