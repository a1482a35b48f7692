#include "zarbo/support/paths.h"

#include "platform/files/native_path.h"

#include "brx/documents.h"
#include "platform/files/files.h"

namespace {

size_t lastSeparator(const std::wstring& path) {
  const size_t last = path.rfind(L'\\');
  return last != std::wstring::npos ? last : path.rfind(L'/');
}

}  // namespace

std::wstring folderOfPath(const std::wstring& path) {
  const size_t last = lastSeparator(path);
  return last == std::wstring::npos ? L"" : path.substr(0, last);
}

std::wstring fileOfPath(const std::wstring& path) {
  const size_t last = lastSeparator(path);
  return last == std::wstring::npos ? L"" : path.substr(last + 1);
}

std::wstring currentDrawingName() {
  const AcApDocument* const document = acDocManagerPtr()->curDocument();
  return document ? fileOfPath(document->fileName()) : L"";
}

bool getPrivateTempFolder(std::wstring& folder) {
  folder = platform::temporaryFolder();
  if (folder.empty()) return false;
  folder += platform::pathSeparator() + std::wstring(L"KV_temp") + platform::pathSeparator();
  if (platform::folderExists(folder) || platform::makeFolder(folder)) return true;
  folder.clear();
  return false;
}
