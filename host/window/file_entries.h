#pragma once

#include <functional>
#include <string>

namespace host {

class Document;

/// What the entries of the menu for files do. What goes wrong is told in a box.
class FileEntries {
 public:
  /// Writes the current drawing for other programs; false with the problem.
  using Export = std::function<bool(const std::string& file, std::string& problem)>;
  explicit FileEntries(Export exportTo) : export_(std::move(exportTo)) {}

  void makeNew();
  void open();
  void exportDrawing();
  /// Under its own name where it has a file. False when it wasn't saved.
  bool save(Document& document);
  bool saveAs(Document& document);
  /// Asks whether changes are to be saved. False when the person wants to go on with the drawing.
  bool mayClose(Document& document);
  void closeCurrent();

 private:
  Export export_;
};

}  // namespace host
