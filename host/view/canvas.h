#pragma once

#include <memory>

#include "host/view/camera.h"
#include "host/view/hiding.h"
#include "host/view/overlay.h"
#include "host/view/scene.h"

namespace host::view {

/// A scene's picture as a camera shows it, kept and brought up to date by parts. The order of a turn:
/// `follow`, `paint` in slices, `compose` with what lies over it. Scene and camera outlive the canvas.
class Canvas {
 public:
  Canvas(Scene& scene, Camera& camera);
  ~Canvas();
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;

  void setGround(Ground ground);
  void setVisual(Visual visual);
  Ground ground() const;
  Visual visual() const;

  /// Takes up the camera's view and size, and shows of it at once what the kept picture can: after a pan by
  /// whole pixels the moved picture, after a zoom the scaled one, after a turn what was there. Marks the rest
  /// to be painted. True when something changed.
  bool follow();
  /// Goes on painting what is marked, and what changed in the scene, until all is or `stop` says so; records
  /// in the same slices. True when the picture is whole.
  bool paint(const Stop& stop = {});
  bool isWhole() const;
  /// Everything is painted anew by the next calls of `paint`.
  void repaint();

  /// Puts the overlay over the picture and tells which part of `shown` has changed since the last call.
  PixelBox compose(const Overlay& overlay = {});

  int width() const;
  int height() const;
  /// Pixels with premultiplied alpha, 0xAARRGGBB, `width` to a row, the topmost row first: the picture
  /// without and with its overlay. Valid until the next call of `follow`.
  const std::uint32_t* pixels() const;
  const std::uint32_t* shown() const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace host::view
