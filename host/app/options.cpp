#include "host/app/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>

namespace host {
namespace {

constexpr int wrongUsage = 2;

/// "1600x1200" into its two numbers.
void readSize(const std::string& text, PictureOptions& picture) {
  char behind = 0;
  const bool whole = std::sscanf(text.c_str(), "%5dx%5d%c", &picture.width, &picture.height, &behind) == 2;
  if (!whole || picture.width < 1 || picture.height < 1 || picture.width > 20000 || picture.height > 20000)
    throw CLI::ValidationError("--size", text + ": two numbers from 1 to 20000 with an x between");
}

void checkZoom(const std::vector<double>& zoom) {
  if (!zoom.empty() && !(zoom[0] < zoom[2] && zoom[1] < zoom[3]))
    throw CLI::ValidationError("--zoom", "left must be below right, and bottom below top");
}

/// Drawings may stand among the files, as desktops give them.
void sortFiles(Options& options) {
  const auto isDrawing = [](std::string file) {
    for (char& letter : file)
      letter = letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
    return file.ends_with(".dwg") || file.ends_with(".dxf");
  };
  const auto drawings = std::stable_partition(options.files.begin(), options.files.end(),
                                              [&](const std::string& each) { return !isDrawing(each); });
  options.drawings.insert(options.drawings.end(), drawings, options.files.end());
  options.files.erase(drawings, options.files.end());
}

void addPictureOptions(CLI::App& app, PictureOptions& picture) {
  app.add_option("--view", picture.view, "Pictures show the drawing from above or from the side: plan, iso")
      ->check(CLI::IsMember({"plan", "iso"}));
  app.add_option(
         "--visual", picture.visual,
         "What faces do: wires, hidden lines removed, shaded; without it shaded in iso, wires in plan")
      ->check(CLI::IsMember({"wires", "hidden", "shaded"}));
  app.add_option("--ground", picture.ground, "Ground of pictures: white, dark")
      ->check(CLI::IsMember({"white", "dark"}));
  app.add_option_function<std::string>(
         "--size", [&picture](const std::string& text) { readSize(text, picture); },
         "Size of pictures, 1600x1200 without it")
      ->type_name("WxH");
  app.add_option("--zoom", picture.zoom, "Part of the drawing that pictures show; all of it without it")
      ->type_name("LEFT,BOTTOM,RIGHT,TOP")
      ->delimiter(',')
      ->expected(4);
}

}  // namespace

std::optional<Options> readOptions(int count, char** words, int& status) {
  Options options;
  CLI::App app("A drawing host with its LISP that runs the Zarbo module, headless or in a window.",
               "zarbo-host");
  app.set_version_flag("--version", "zarbo-host " ZARBO_VERSION);
  app.add_option("files", options.files, "LISP files to load, in order; drawings (.dwg .dxf) to open")
      ->type_name("FILE");
  app.add_option("--eval", options.expressions, "Evaluate; the value of the last one is printed")
      ->type_name("EXPR")
      ->take_all()
      ->expected(1)
      ->allow_extra_args(false);
  app.add_option("--batch", options.batch,
                 "Evaluate form by form and print a transcript; - is standard input")
      ->type_name("FILE");
  app.add_option("--drawing", options.drawings, "Open this drawing")
      ->type_name("FILE")
      ->allow_extra_args(false);
  app.add_option("--output", options.output,
                 "Write the current drawing at the end: .dxf .dwg .png .svg .pdf, or its solids: .ifc .step "
                 ".stl .glb")
      ->type_name("FILE");
  app.add_flag("--meshes", options.meshes, "In a .dxf, put a mesh beside each solid");
  addPictureOptions(app, options.picture);
  app.add_option("--settings", options.settings, "Folder of the user's settings")->type_name("DIR");
  app.add_option("--support", options.support, "Add a folder to the search path")
      ->type_name("PATH")
      ->allow_extra_args(false);
  app.add_option("--module", options.module, "Load this module instead of zarbo")->type_name("FILE");
  app.add_option("--solid", options.solid, "Load the solid module from this file")->type_name("FILE");
  app.add_flag("--no-module", options.noModule, "Load no module");
  app.add_flag("--window", options.window, "Show a window with the drawing and a command line");
  app.add_flag("--widgets", options.widgets,
               "Scripts of dialogs work on real widgets, which nobody sees where there is no display");
  try {
    app.parse(count, words);
    sortFiles(options);
    checkZoom(options.picture.zoom);
  } catch (const CLI::ParseError& problem) {
    status = app.exit(problem) == 0 ? 0 : wrongUsage;
    return std::nullopt;
  }
  return options;
}

}  // namespace host
