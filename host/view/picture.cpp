#include "host/view/picture.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>

#include <algorithm>
#include <memory>

#include "host/view/scene_painter.h"
#include "platform/files/whole_file.h"

namespace host::view {
namespace {

constexpr double millimetresPerInch = 25.4, pixelsPerInch = 96, pointsPerInch = 72;
/// Share of the picture that stays empty at each side of the drawing.
constexpr double margin = 0.03;
constexpr int largestSize = 20000;

struct Freed {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
};

cairo_status_t append(void* bytes, const unsigned char* data, unsigned length) {
  static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(data), length);
  return CAIRO_STATUS_SUCCESS;
}

cairo_surface_t* makeSurface(PictureKind kind, const PictureSettings& settings, std::string& bytes) {
  switch (kind) {
    case PictureKind::svg: {
      cairo_surface_t* const made =
          cairo_svg_surface_create_for_stream(append, &bytes, settings.width, settings.height);
      cairo_svg_surface_set_document_unit(made, CAIRO_SVG_UNIT_PX);
      return made;
    }
    case PictureKind::pdf:
      return cairo_pdf_surface_create_for_stream(append, &bytes, settings.width, settings.height);
    default:
      return cairo_image_surface_create(CAIRO_FORMAT_RGB24, settings.width, settings.height);
  }
}

void bringUpToDate(Scene& scene, const PictureSettings& settings) {
  SceneLook look;
  if (settings.visual != Visual::wires) look.towards = settings.projection.towards();
  scene.setLook(look);
  scene.update();
}

}  // namespace

std::optional<PictureKind> pictureKindOf(const std::string& file) {
  const auto endsWith = [&file](std::string_view ending) {
    return file.size() > ending.size() &&
           std::equal(ending.rbegin(), ending.rend(), file.rbegin(),
                      [](char a, char b) { return a == (b >= 'A' && b <= 'Z' ? b - 'A' + 'a' : b); });
  };
  if (endsWith(".png")) return PictureKind::png;
  if (endsWith(".svg")) return PictureKind::svg;
  if (endsWith(".pdf")) return PictureKind::pdf;
  return std::nullopt;
}

PlaneBox shownWindow(Scene& scene, const PictureSettings& settings) {
  bringUpToDate(scene, settings);
  PlaneBox box = settings.window ? *settings.window : scene.extents(settings.projection);
  if (box.empty()) box = {0, 0, 1, 1};
  // A point or a line along an axis gets some room around it, also far from the origin.
  const double reach =
      std::max(std::abs(box.left) + std::abs(box.right), std::abs(box.bottom) + std::abs(box.top));
  const double least =
      std::max({(box.right - box.left) * 1e-3, (box.top - box.bottom) * 1e-3, reach * 1e-9, 1e-9});
  double width = std::max(box.right - box.left, least), height = std::max(box.top - box.bottom, least);
  if (!settings.window) width /= 1 - 2 * margin, height /= 1 - 2 * margin;
  const double shape = static_cast<double>(settings.width) / settings.height;
  if (width < height * shape) width = height * shape;
  height = width / shape;
  const double x = (box.left + box.right) / 2, y = (box.bottom + box.top) / 2;
  return {x - width / 2, y - height / 2, x + width / 2, y + height / 2};
}

std::string pictureBytes(Scene& scene, const PictureSettings& settings, PictureKind kind,
                         std::string& problem) {
  if (settings.width < 1 || settings.height < 1 || settings.width > largestSize ||
      settings.height > largestSize) {
    problem = "a picture has 1 to " + std::to_string(largestSize) + " units at each side";
    return {};
  }
  std::string bytes;
  const std::unique_ptr<cairo_surface_t, Freed> surface(makeSurface(kind, settings, bytes));
  const std::unique_ptr<cairo_t, Freed> cairo(cairo_create(surface.get()));
  Surface target;
  target.cairo = cairo.get();
  target.width = settings.width, target.height = settings.height;
  target.window = shownWindow(scene, settings);
  target.projection = settings.projection, target.ground = settings.ground;
  if (kind == PictureKind::png) {
    target.pixels = {reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(surface.get())),
                     cairo_image_surface_get_stride(surface.get()) / 4,
                     settings.height,
                     {0, 0, settings.width, settings.height}};
  }
  target.unitsPerMillimetre = (kind == PictureKind::pdf ? pointsPerInch : pixelsPerInch) / millimetresPerInch;
  // Chords must not be seen as such.
  constexpr double seenPart = 0.25;  // of a pixel
  scene.refine(target.projection, target.window,
               (target.window.right - target.window.left) / target.width * seenPart);
  ScenePainter(scene, target, settings.visual).run();
  cairo_surface_flush(surface.get());
  cairo_status_t status = cairo_status(cairo.get());
  if (status == CAIRO_STATUS_SUCCESS && kind == PictureKind::png) {
    status = cairo_surface_write_to_png_stream(surface.get(), append, &bytes);
  }
  cairo_surface_finish(surface.get());
  if (status == CAIRO_STATUS_SUCCESS) status = cairo_surface_status(surface.get());
  if (status == CAIRO_STATUS_SUCCESS) return bytes;
  problem = cairo_status_to_string(status);
  return {};
}

bool writePicture(Scene& scene, const PictureSettings& settings, const std::string& file,
                  std::string& problem) {
  const auto kind = pictureKindOf(file);
  if (!kind) return problem = "the ending names no kind of picture", false;
  const std::string bytes = pictureBytes(scene, settings, *kind, problem);
  if (bytes.empty()) return false;
  platform::WholeFile target(file);
  if (target.write(bytes) && target.commit()) return true;
  return problem = "can't be written", false;
}

}  // namespace host::view
