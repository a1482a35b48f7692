#include "host/documents/drawings.h"

#include <cstdio>

#include "brx/db_database.h"
#include "host/console/command_line.h"
#include "host/database/stubs.h"
#include "host/filing/files.h"
#include "platform/text/utf.h"

namespace host {
namespace {

void closeDrawing(AcDbDatabase* drawing) { delete drawing; }

/// What was wrong in a file goes to the command line, or to standard error where nobody sees that.
void tell(const FilingReport& report, const std::wstring& path) {
  if (!report.count()) return;
  const std::wstring text = report.text(path);
  commandLine().print(L"\n" + text);
  if (!commandLine().isShown()) std::fprintf(stderr, "%s", toUtf8(text).c_str());
}

}  // namespace

DrawingPointer newDrawing() { return {new AcDbDatabase, closeDrawing}; }

DrawingPointer openDrawing(const std::wstring& path, std::wstring& problem) {
  DrawingPointer drawing(new AcDbDatabase(false), closeDrawing);
  FilingReport report;
  if (readDrawingFile(*drawing, path, report) != Acad::eOk) {
    problem = report.text(path);
    while (!problem.empty() && problem.back() == L'\n') problem.pop_back();
    return {nullptr, closeDrawing};
  }
  tell(report, path);
  drawing->imp().fileName = path;
  return drawing;
}

Acad::ErrorStatus saveDrawing(AcDbDatabase& drawing, const std::wstring& path, std::wstring& problem) {
  const Acad::ErrorStatus status = writeDrawingFile(drawing, path);
  if (status == Acad::eOk) {
    drawing.imp().fileName = path;
  } else {
    problem = path + L": " + writingProblem();
  }
  return status;
}

}  // namespace host
