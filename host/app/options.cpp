#include "host/app/options.h"

#include <CLI/CLI.hpp>

namespace host {
namespace {

constexpr int wrongUsage = 2;

}  // namespace

std::optional<Options> readOptions(int count, char** words, int& status) {
  Options options;
  CLI::App app("A drawing host with its LISP, headless or in a window, that runs the Zarbo module.",
               "zarbo-host");
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
  app.add_option("--output", options.output, "Write the current drawing at the end: .dxf .png .svg .pdf")
      ->type_name("FILE");
  app.add_option("--settings", options.settings, "Folder of the user's settings")->type_name("DIR");
  app.add_option("--support", options.support, "Add a folder to the search path")
      ->type_name("PATH")
      ->allow_extra_args(false);
  app.add_option("--module", options.module, "Load this module instead of zarbo")->type_name("FILE");
  app.add_option("--solid", options.solid, "Load the solid module from this file")->type_name("FILE");
  app.add_flag("--no-module", options.noModule, "Load no module");
  app.add_flag("--window", options.window, "Show a window with the drawing and a command line");
  try {
    app.parse(count, words);
  } catch (const CLI::ParseError& problem) {
    status = app.exit(problem) == 0 ? 0 : wrongUsage;
    return std::nullopt;
  }
  return options;
}

}  // namespace host
