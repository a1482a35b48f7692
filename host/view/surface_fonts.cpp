#include "host/view/surface_fonts.h"

#include <cairo-ft.h>

#include <cmath>

#include "platform/text/utf.h"

namespace host::view {
namespace {

/// Letters larger or flatter than this upset the surface's arithmetic; they are drawn as outlines.
constexpr double largestLetters = 5000, flattest = 1e-3;

/// Glyphs of one font face that follow each other.
struct Run {
  FT_FaceRec_* face = nullptr;
  float em = 0;
  std::string bytes;
  std::vector<cairo_glyph_t> glyphs;
  std::vector<cairo_text_cluster_t> clusters;
};

void useUnhintedOutlines(cairo_t* cairo) {
  cairo_font_options_t* const options = cairo_font_options_create();
  cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
  cairo_set_font_options(cairo, options);
  cairo_font_options_destroy(options);
}

std::vector<Run> runsOf(const Letters& letters, PlanePoint pen, const PlanePoint& x) {
  std::vector<Run> runs;
  for (const wchar_t letter : letters.letters) {
    const text::Glyph& glyph = letters.font->glyph(letter);
    if (runs.empty() || runs.back().face != glyph.face) runs.push_back({glyph.face, glyph.em, {}, {}, {}});
    Run& run = runs.back();
    const std::string bytes = toUtf8(std::wstring_view(&letter, 1));
    run.bytes += bytes;
    run.glyphs.push_back({glyph.index, pen.x, pen.y});
    run.clusters.push_back({static_cast<int>(bytes.size()), 1});
    pen.x += glyph.advance * letters.tracking * x.x, pen.y += glyph.advance * letters.tracking * x.y;
  }
  return runs;
}

}  // namespace

FontsOfSurface::~FontsOfSurface() {
  for (const auto& [face, made] : faces_) cairo_font_face_destroy(made);
}

cairo_font_face_t* FontsOfSurface::faceOf(FT_FaceRec_* face) {
  cairo_font_face_t*& made = faces_[face];
  if (!made) made = cairo_ft_font_face_create_for_ft_face(face, FT_LOAD_NO_HINTING);
  return made;
}

bool FontsOfSurface::show(cairo_t* cairo, const Letters& letters, PlanePoint pen, const PlanePoint& x,
                          const PlanePoint& y) {
  const double across = std::abs(x.x * y.y - x.y * y.x),
               longest = std::max(std::hypot(x.x, x.y), std::hypot(y.x, y.y));
  if (longest > largestLetters || !(across > flattest * longest * longest)) return false;
  const std::vector<Run> runs = runsOf(letters, pen, x);
  for (const Run& each : runs) {
    if (!each.face) return false;
  }
  useUnhintedOutlines(cairo);
  for (const Run& each : runs) {
    cairo_matrix_t matrix;
    cairo_matrix_init(&matrix, each.em * x.x, each.em * x.y, -each.em * y.x, -each.em * y.y, 0, 0);
    cairo_set_font_face(cairo, faceOf(each.face));
    cairo_set_font_matrix(cairo, &matrix);
    cairo_show_text_glyphs(cairo, each.bytes.data(), static_cast<int>(each.bytes.size()), each.glyphs.data(),
                           static_cast<int>(each.glyphs.size()), each.clusters.data(),
                           static_cast<int>(each.clusters.size()),
                           static_cast<cairo_text_cluster_flags_t>(0));
  }
  return true;
}

}  // namespace host::view
