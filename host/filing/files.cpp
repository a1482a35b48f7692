#include "host/filing/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string_view>

#include "host/database/drawing_files.h"
#include "host/database/stubs.h"
#include "host/filing/dxf_reader.h"
#include "host/filing/dxf_tokens.h"
#include "host/filing/dxf_writer.h"
#include "host/filing/snapshot.h"
#include "platform/files/native_path.h"
#include "platform/files/whole_file.h"
#include "platform/text/letters.h"
#include "platform/text/utf.h"

namespace host {
namespace {

/// A descriptor that closes itself.
class OpenFile {
 public:
  explicit OpenFile(const std::string& path)
      : descriptor_(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}
  ~OpenFile() {
    if (descriptor_ >= 0) close(descriptor_);
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;
  int descriptor() const { return descriptor_; }

 private:
  int descriptor_;
};

Acad::ErrorStatus readBytes(const std::wstring& path, std::string& bytes) {
  const OpenFile file(platform::nativePath(path));
  if (file.descriptor() < 0) return errno == ENOENT ? Acad::eFileNotFound : Acad::eFileAccessErr;
  struct stat about;
  // Pipes and devices have no end that could be waited for.
  if (fstat(file.descriptor(), &about) != 0 || !S_ISREG(about.st_mode)) return Acad::eFileAccessErr;
  bytes.resize(static_cast<size_t>(about.st_size));
  size_t length = 0;
  while (length < bytes.size()) {
    const ssize_t count = read(file.descriptor(), bytes.data() + length, bytes.size() - length);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return Acad::eFileAccessErr;
    if (count == 0) break;
    length += static_cast<size_t>(count);
  }
  bytes.resize(length);
  return Acad::eOk;
}

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
  std::string bytes;
  const Acad::ErrorStatus status = readBytes(path, bytes);
  if (status == Acad::eOk) return readKnown(drawing, bytes, report);
  report.add(0, 0, status == Acad::eFileNotFound ? L"there is no such file" : L"the file can't be read");
  return status;
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
