#include "host/app/options.h"

#include <CLI/CLI.hpp>
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

void addPictureOptions(CLI::App& app, PictureOptions& picture) {
  app.add_option("--view", picture.view, "Pictures show the drawing from above or from the side: plan, iso")
      ->check(CLI::IsMember({"plan", "iso"}));
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
  CLI::App app("A drawing host with its LISP, headless, that runs the Zarbo module.", "zarbo-host");
  app.set_version_flag("--version", "zarbo-host " ZARBO_VERSION);
  app.add_option("files", options.files, "LISP files to load, in order")->type_name("FILE.lsp");
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
  app.add_option("--output", options.output, "Write the current drawing at the end: .dxf .dwg .png .svg .pdf")
      ->type_name("FILE");
  addPictureOptions(app, options.picture);
  app.add_option("--settings", options.settings, "Folder of the user's settings")->type_name("DIR");
  app.add_option("--support", options.support, "Add a folder to the search path")
      ->type_name("PATH")
      ->allow_extra_args(false);
  app.add_option("--module", options.module, "Load this module instead of zarbo")->type_name("FILE");
  app.add_option("--solid", options.solid, "Load the solid module from this file")->type_name("FILE");
  app.add_flag("--no-module", options.noModule, "Load no module");
  // Known, so that it is refused by name, but not offered as long as there is no window.
  app.add_flag("--window", options.window, "Show a window with the drawing and a command line")->group("");
  app.add_flag("--widgets", options.widgets,
               "Scripts of dialogs work on real widgets, which nobody sees where there is no display");
  try {
    app.parse(count, words);
    checkZoom(options.picture.zoom);
  } catch (const CLI::ParseError& problem) {
    status = app.exit(problem) == 0 ? 0 : wrongUsage;
    return std::nullopt;
  }
  return options;
}

}  // namespace host
