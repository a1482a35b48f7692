#include "host/app/output.h"

#include <algorithm>

#include "host/documents/documents.h"
#include "host/view/picture.h"
#include "host/view/recorder.h"
#include "platform/text/utf.h"

namespace host {
namespace {

bool isDrawing(const std::string& file) {
  std::string ending = file.substr(file.size() - std::min<size_t>(file.size(), 4));
  for (char& letter : ending)
    letter = letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
  return ending == ".dxf" || ending == ".dwg";
}

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

/// Recorded anew, finer, when chords of the first list could be seen as such.
bool writePicture(AcDbDatabase& drawing, const Options& options, std::string& problem) {
  constexpr double seenPart = 0.25;  // of a pixel
  const view::PictureSettings settings = settingsOf(options.picture);
  view::DisplayList list = view::record(drawing);
  const view::PlaneBox shown = view::shownWindow(list, settings);
  const double fine = (shown.right - shown.left) / settings.width * seenPart;
  if (list.deviation > fine) list = view::record(drawing, {}, fine);
  return view::writePicture(list, settings, options.output, problem);
}

bool writeDrawing(AcDbDatabase& drawing, const std::string& file, std::string& problem) {
  std::wstring why;
  if (saveDrawing(drawing, fromUtf8(file), why) == Acad::eOk) return true;
  return problem = toUtf8(why), false;
}

}  // namespace

bool canOutput(const std::string& file) { return isDrawing(file) || view::pictureKindOf(file).has_value(); }

bool writeOutput(const Options& options, std::string& problem) {
  const Document* const document = documents().current();
  const bool done = !document                   ? (problem = "no drawing is open", false)
                    : isDrawing(options.output) ? writeDrawing(*document->database(), options.output, problem)
                                                : writePicture(*document->database(), options, problem);
  if (!done) problem = options.output + ": " + problem;
  return done;
}

}  // namespace host
