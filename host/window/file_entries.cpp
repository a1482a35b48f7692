#include "host/window/file_entries.h"

#include "host/documents/documents.h"
#include "platform/desktop/desktop.h"
#include "platform/text/utf.h"

namespace host {
namespace {

using platform::BoxAnswer;

const wchar_t* const boxTitle = L"Zarbo host";

void tell(const std::wstring& problem) {
  platform::desktop().messageBox({boxTitle, problem, unsigned{platform::okBox} + platform::exclamationIcon});
}

bool hasFile(const Document& document) {
  return std::wstring_view(document.fileName()).find(L'/') != std::wstring_view::npos;
}

std::wstring baseName(const Document& document) {
  const std::wstring path = document.fileName();
  return path.substr(path.rfind(L'/') + 1);
}

std::wstring folderOf(const Document* document) {
  const std::wstring path = document ? document->fileName() : L"";
  const size_t slash = path.rfind(L'/');
  return slash == std::wstring::npos ? std::wstring() : path.substr(0, slash);
}

platform::FileChoice drawingChoice(bool open, const wchar_t* title) {
  platform::FileChoice choice;
  choice.open = open;
  choice.title = title;
  choice.folder = folderOf(documents().current());
  choice.filters = {{L"Drawings (*.dwg)", L"*.dwg"}, {L"Drawing exchange (*.dxf)", L"*.dxf"}};
  choice.mustExist = open;
  return choice;
}

bool saveTo(Document& document, const std::wstring& path) {
  std::wstring problem;
  if (documents().save(document, path, problem)) return true;
  tell(problem);
  return false;
}

}  // namespace

void FileEntries::makeNew() { documents().create(L""); }

void FileEntries::open() {
  platform::FileChoice choice = drawingChoice(true, L"Open");
  choice.filters.emplace_back(L"All files (*.*)", L"*.*");
  const auto path = platform::desktop().chooseFile(choice);
  std::wstring problem;
  if (path && !documents().openFile(*path, problem)) tell(problem);
}

void FileEntries::exportDrawing() {
  if (!documents().current()) return;
  platform::FileChoice choice = drawingChoice(false, L"Export");
  choice.filters = {{L"Picture (*.png)", L"*.png"},        {L"Picture (*.svg)", L"*.svg"},
                    {L"Document (*.pdf)", L"*.pdf"},       {L"Drawing exchange (*.dxf)", L"*.dxf"},
                    {L"Building model (*.ifc)", L"*.ifc"}, {L"Solids (*.step)", L"*.step"},
                    {L"Mesh (*.stl)", L"*.stl"},           {L"Mesh (*.glb)", L"*.glb"}};
  choice.defaultExtension = L"png";
  const auto path = platform::desktop().chooseFile(choice);
  std::string problem;
  if (path && !export_(toUtf8(*path), problem)) tell(fromUtf8(problem));
}

bool FileEntries::save(Document& document) {
  return hasFile(document) ? saveTo(document, L"") : saveAs(document);
}

bool FileEntries::saveAs(Document& document) {
  platform::FileChoice choice = drawingChoice(false, L"Save drawing as");
  choice.name = baseName(document);
  choice.defaultExtension = L"dwg";
  const auto path = platform::desktop().chooseFile(choice);
  return path && saveTo(document, *path);
}

bool FileEntries::mayClose(Document& document) {
  if (!document.isChanged()) return true;
  const BoxAnswer answer =
      platform::desktop().messageBox({boxTitle, L"Save changes to " + baseName(document) + L"?",
                                      unsigned{platform::yesNoCancelBox} + platform::questionIcon});
  if (answer == BoxAnswer::yes) return save(document);
  return answer == BoxAnswer::no;
}

void FileEntries::closeCurrent() {
  Document* const document = documents().current();
  if (document && mayClose(*document)) documents().close(*document);
}

}  // namespace host
