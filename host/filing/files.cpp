#include "host/filing/files.h"

#include <cerrno>
#include <cstring>
#include <string_view>

#include "host/database/drawing_files.h"
#include "host/database/stubs.h"
#include "host/filing/dxf_reader.h"
#include "host/filing/dxf_tokens.h"
#include "host/filing/dxf_writer.h"
#include "host/filing/snapshot.h"
#include "platform/files/file_facts.h"
#include "platform/files/native_path.h"
#include "platform/files/whole_file.h"
#include "platform/text/letters.h"
#include "platform/text/utf.h"

namespace host {
namespace {

/// The version mark with which genuine DWG files begin; empty for other files.
std::wstring dwgVersion(std::string_view bytes) {
  constexpr size_t markSize = 6;
  const bool isDwg = bytes.size() >= markSize && (bytes.starts_with("AC10") || bytes.starts_with("AC1.") ||
                                                  bytes.starts_with("AC2.") || bytes.starts_with("MC0.0"));
  return isDwg ? fromUtf8(bytes.substr(0, markSize)) : std::wstring();
}

bool isEmpty(const AcDbDatabase& drawing) {
  for (const auto& [type, stub] : drawing.imp().tables) {
    if (!static_cast<const AcDbSymbolTable*>(stub->object)->recordIds().empty()) return false;
  }
  return true;
}

Acad::ErrorStatus readKnown(AcDbDatabase& drawing, std::string_view bytes, FilingReport& report) {
  if (looksLikeSnapshot(bytes)) return readSnapshot(bytes, drawing, report);
  if (looksLikeDxf(bytes)) return readDxf(bytes, drawing, report);
  const std::wstring version = dwgVersion(bytes);
  report.add(0, 0,
             version.empty()
                 ? L"the file is no drawing"
                 : L"this is a DWG file (" + version +
                       L"), which can't be read here; saved as DXF by the program that made it, it can");
  return version.empty() ? Acad::eFilerError : Acad::eNotImplementedYet;
}

bool hasEnding(const std::wstring& path, std::wstring_view ending) {
  return path.size() > ending.size() && lowerCased(path.substr(path.size() - ending.size())) == ending;
}

}  // namespace

Acad::ErrorStatus readDrawingFile(AcDbDatabase& drawing, const std::wstring& path, FilingReport& report) {
  if (!isEmpty(drawing)) return Acad::eNotApplicable;
  if (const auto bytes = platform::readWhole(platform::nativePath(path))) {
    return readKnown(drawing, *bytes, report);
  }
  const bool missing = platform::lastFileProblem() == platform::FileProblem::notFound;
  report.add(0, 0, missing ? L"there is no such file" : L"the file can't be read");
  return missing ? Acad::eFileNotFound : Acad::eFileAccessErr;
}

Acad::ErrorStatus writeDrawingFile(AcDbDatabase& drawing, const std::wstring& path) {
  errno = 0;
  platform::WholeFile file(platform::nativePath(path));
  if (hasEnding(path, L".dxf")) {
    DxfSink sink(file);
    if (!writeDxf(drawing, sink)) return Acad::eFileAccessErr;
  } else if (!writeSnapshot(drawing, file)) {
    return Acad::eFileAccessErr;
  }
  return file.commit() ? Acad::eOk : Acad::eFileAccessErr;
}

std::wstring writingProblem() {
  return L"can't be written" + (errno ? L" (" + fromUtf8(std::strerror(errno)) + L")" : L"");
}

Acad::ErrorStatus writeDxfWithMeshes(AcDbDatabase& drawing, const std::wstring& path) {
  errno = 0;
  platform::WholeFile file(platform::nativePath(path));
  DxfSink sink(file);
  return writeDxf(drawing, sink, DxfMeshes::besideSolids) && file.commit() ? Acad::eOk : Acad::eFileAccessErr;
}

namespace {

Acad::ErrorStatus readForDrawing(AcDbDatabase& drawing, const std::wstring& path, std::wstring& problem) {
  FilingReport report;
  const Acad::ErrorStatus status = readDrawingFile(drawing, path, report);
  problem = report.text(path);
  return status;
}

Acad::ErrorStatus writeForDrawing(AcDbDatabase& drawing, const std::wstring& path, std::wstring& problem) {
  const Acad::ErrorStatus status = writeDrawingFile(drawing, path);
  if (status != Acad::eOk) problem = path + L": " + writingProblem();
  return status;
}

const bool registered = (setDrawingFiles({readForDrawing, writeForDrawing}), true);

}  // namespace

}  // namespace host
