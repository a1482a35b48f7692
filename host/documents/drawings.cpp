#include "host/documents/drawings.h"

#include <filesystem>

#include "brx/db_database.h"
#include "platform/text/utf.h"

namespace host {

DrawingPointer newDrawing() {
  return {new AcDbDatabase, [](AcDbDatabase* drawing) { delete drawing; }};
}

DrawingPointer openDrawing(const std::wstring& path, std::wstring& problem) {
  std::error_code ignored;
  if (std::filesystem::exists(toUtf8(path), ignored)) {
    problem = path + L": this host can't read drawings yet";
    return {nullptr, [](AcDbDatabase*) {}};
  }
  return newDrawing();
}

Acad::ErrorStatus saveDrawing(AcDbDatabase&, const std::wstring&) { return Acad::eOk; }

}  // namespace host
