#pragma once

#include <cairo.h>

#include <map>

#include "host/view/view.h"

namespace host::view {

/// Letters for surfaces that hold fonts: they stay text that can be searched and copied, and each
/// outline is written once.
class FontsOfSurface {
 public:
  FontsOfSurface() = default;
  FontsOfSurface(const FontsOfSurface&) = delete;
  FontsOfSurface& operator=(const FontsOfSurface&) = delete;
  ~FontsOfSurface();
  /// `pen` is the left end of the base line on the surface, `x` and `y` the way of a unit of the font.
  /// False, with nothing drawn, for letters that the surface's fonts can't show.
  bool show(cairo_t* cairo, const Letters& letters, PlanePoint pen, const PlanePoint& x, const PlanePoint& y);

 private:
  cairo_font_face_t* faceOf(FT_FaceRec_* face);
  std::map<FT_FaceRec_*, cairo_font_face_t*> faces_;
};

}  // namespace host::view
