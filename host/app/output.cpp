#include "host/app/output.h"

#include "host/documents/documents.h"
#include "host/view/picture.h"
#include "host/view/recorder.h"
#include "platform/text/utf.h"

namespace host {
namespace {

bool isDrawing(const std::string& file) { return file.ends_with(".dxf") || file.ends_with(".dwg"); }

view::PictureSettings settingsOf(const PictureOptions& options) {
  view::PictureSettings settings;
  if (options.view == "iso") settings.projection = view::Projection::isometric();
  if (options.ground == "dark") settings.ground = view::Ground::dark;
  settings.width = options.width, settings.height = options.height;
  if (options.zoom.size() == 4) {
    settings.window = view::PlaneBox{options.zoom[0], options.zoom[1], options.zoom[2], options.zoom[3]};
  }
  return settings;
}

bool writeDrawing(AcDbDatabase& drawing, const std::string& file, std::string& problem) {
  if (saveDrawing(drawing, fromUtf8(file)) == Acad::eOk) return true;
  return problem = "can't be written", false;
}

}  // namespace

bool canOutput(const std::string& file) { return isDrawing(file) || view::pictureKindOf(file).has_value(); }

bool writeOutput(const Options& options, std::string& problem) {
  const Document* const document = documents().current();
  const bool done = !document ? (problem = "no drawing is open", false)
                    : isDrawing(options.output)
                        ? writeDrawing(*document->database(), options.output, problem)
                        : view::writePicture(view::record(*document->database()), settingsOf(options.picture),
                                             options.output, problem);
  if (!done) problem = options.output + ": " + problem;
  return done;
}

}  // namespace host
