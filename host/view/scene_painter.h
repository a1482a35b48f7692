#pragma once

#include <memory>
#include <optional>

#include "host/view/hiding.h"
#include "host/view/scene.h"

namespace host::view {

/// Paints what a surface shows of a scene, in slices. The scene must not change meanwhile; it and the surface
/// outlive the painter.
class ScenePainter {
 public:
  ScenePainter(const Scene& scene, const Surface& surface, Visual visual);
  /// Goes on until all is painted, or `stop` says so; true when it is.
  bool run(const Stop& stop = {});

 private:
  enum class Step { faces, ground, lines, done };
  bool forEachEntry(const Stop& stop, const std::function<void(std::uint32_t)>& work);
  void paint(std::uint32_t number);

  const Scene& scene_;
  Surface surface_;
  std::optional<HiddenView> hidden_;
  std::unique_ptr<Painter> painter_;
  std::vector<std::uint32_t> entries_;
  size_t next_ = 0;
  Step step_ = Step::ground;
  DisplayList seen_;
  double pixel_;
};

/// By how much ink may leave the boxes of a scene's entries, in units of the surface.
double reachOf(const Scene& scene, const Surface& surface);

}  // namespace host::view
