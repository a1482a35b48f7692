#pragma once

#include <optional>
#include <string>
#include <vector>

namespace host {

/// How `output` shows the drawing where it is a picture.
struct PictureOptions {
  /// "plan" or "iso", "white" or "dark".
  std::string view = "plan", ground = "white";
  /// Pixels, in a PDF points.
  int width = 1600, height = 1200;
  /// Left, bottom, right and top in the plane of the view; empty shows all.
  std::vector<double> zoom;
};

/// What the command line asks of the program. All texts are UTF-8.
struct Options {
  std::vector<std::string> files;
  std::vector<std::string> expressions;
  /// "-" is standard input.
  std::string batch;
  std::vector<std::string> drawings;
  std::string output;
  PictureOptions picture;
  std::string settings;
  std::vector<std::string> support;
  std::string module = "zarbo";
  std::string solid;
  bool noModule = false;
  bool window = false;
  /// Scripts of dialogs work on real widgets.
  bool widgets = false;
};

/// Nothing when the program shall end at once, with `status` as its exit status.
std::optional<Options> readOptions(int count, char** words, int& status);

}  // namespace host
