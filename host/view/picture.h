#pragma once

#include <string>

#include "host/view/hiding.h"
#include "host/view/scene.h"

namespace host::view {

struct PictureSettings {
  Projection projection = Projection::plan();
  Visual visual = Visual::wires;
  Ground ground = Ground::white;
  /// Pixels, or points of 1/72 inch in a PDF.
  int width = 1600, height = 1200;
  /// Part of the plane to be seen; all of the scene without it. The picture shows more at two sides when
  /// its shape is another.
  std::optional<PlaneBox> window;
};

/// Kinds by the ending of a file's name.
enum class PictureKind { png, svg, pdf };
std::optional<PictureKind> pictureKindOf(const std::string& file);

/// Pictures bring the scene up to date, and its look to their own.

/// Writes the picture as a whole or leaves the file alone; false with `problem` set.
bool writePicture(Scene& scene, const PictureSettings& settings, const std::string& file,
                  std::string& problem);
/// The bytes of the picture's file; empty with `problem` set.
std::string pictureBytes(Scene& scene, const PictureSettings& settings, PictureKind kind,
                         std::string& problem);
/// The part of the plane that a picture shows.
PlaneBox shownWindow(Scene& scene, const PictureSettings& settings);

}  // namespace host::view
