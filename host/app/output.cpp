#include "host/app/output.h"

#include <algorithm>

#include "host/documents/documents.h"
#include "host/filing/files.h"
#include "host/solids/solid_export.h"
#include "host/view/picture.h"
#include "platform/text/utf.h"

namespace host {
namespace {

bool endsWith(const std::string& file, std::string_view ending) {
  std::string end = file.substr(file.size() - std::min(file.size(), ending.size()));
  for (char& letter : end) letter = letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
  return end == ending;
}

bool isDrawing(const std::string& file) { return isDxf(file) || endsWith(file, ".dwg"); }

/// Without a word of its own, what stands in space is shaded, and a plan isn't.
view::Visual visualOf(const PictureOptions& options) {
  if (options.visual == "wires") return view::Visual::wires;
  if (options.visual == "hidden") return view::Visual::hidden;
  if (options.visual == "shaded") return view::Visual::shaded;
  return options.view == "iso" ? view::Visual::shaded : view::Visual::wires;
}

view::PictureSettings settingsOf(const PictureOptions& options) {
  view::PictureSettings settings;
  if (options.view == "iso") settings.projection = view::Projection::isometric();
  settings.visual = visualOf(options);
  if (options.ground == "dark") settings.ground = view::Ground::dark;
  settings.width = options.width, settings.height = options.height;
  if (options.zoom.size() == 4) {
    settings.window = view::PlaneBox{options.zoom[0], options.zoom[1], options.zoom[2], options.zoom[3]};
  }
  return settings;
}

bool writePicture(AcDbDatabase& drawing, const Options& options, std::string& problem) {
  view::Scene& scene = view::Scene::of(drawing, drawing.modelSpaceId());
  return view::writePicture(scene, settingsOf(options.picture), options.output, problem);
}

bool writeDrawing(AcDbDatabase& drawing, const Options& options, std::string& problem) {
  const std::wstring path = fromUtf8(options.output);
  std::wstring why;
  if (!options.meshes) {
    if (saveDrawing(drawing, path, why) == Acad::eOk) return true;
    return problem = toUtf8(why), false;
  }
  if (writeDxfWithMeshes(drawing, path) == Acad::eOk) return true;
  return problem = options.output + ": " + toUtf8(writingProblem()), false;
}

}  // namespace

bool isDxf(const std::string& file) { return endsWith(file, ".dxf"); }

bool canOutput(const std::string& file) {
  return isDrawing(file) || isSolidFormat(file) || view::pictureKindOf(file).has_value();
}

bool writeOutput(const Options& options, std::string& problem) {
  const Document* const document = documents().current();
  const bool done = !document                   ? (problem = "no drawing is open", false)
                    : isDrawing(options.output) ? writeDrawing(*document->database(), options, problem)
                    : isSolidFormat(options.output)
                        ? exportSolids(*document->database(), options.output, problem)
                        : writePicture(*document->database(), options, problem);
  if (!done) problem = options.output + ": " + problem;
  return done;
}

}  // namespace host
