#include "zarbo/widgets/browse_cells.h"

#include "platform/desktop/desktop.h"
#include "platform/files/files.h"

namespace {

using platform::Grid;

struct FileKind {
  std::wstring extension, filter;
};
const FileKind drawings = {L"dwg", L"Drawing (*.dwg)"};
const FileKind slides = {L"sld", L"Slide Files (*.sld)"};

std::wstring trimmedRight(const std::wstring& text) {
  return text.substr(0, text.find_last_not_of(L" \t\r\n") + 1);
}

std::wstring firstFile(const std::wstring& folder, const FileKind& kind) {
  const auto found = platform::findFiles(folder + L"\\*." + kind.extension);
  return found.empty() ? std::wstring() : found.front();
}

/// A file's name without folder and extension.
std::wstring titleOf(const std::wstring& path) {
  const std::wstring name = path.substr(path.find_last_of(L"\\/") + 1);
  return name.substr(0, name.rfind(L'.'));
}

/// What the cell gets: the title of the file that was chosen, or its text from before the edit.
std::wstring browse(const Grid& grid, int row, int column, const std::wstring& name,
                    const std::wstring& folder, const FileKind& kind) {
  platform::FileChoice choice;
  choice.mustExist = true;
  choice.defaultExtension = kind.extension;
  choice.filters = {{kind.filter, L"*." + kind.extension}};
  if (!name.empty()) choice.folder = folder, choice.name = name;
  const auto file = platform::desktop().chooseFile(choice);
  return file ? titleOf(*file) : grid.textBeforeEdit(row, column);
}

}  // namespace

void BrowseBlockCell(Grid& grid, int row, int column, const std::wstring& chosen,
                     const std::wstring& folder) {
  if (chosen != L"Browse. . ." && chosen != L"Select custom block. . .") return;
  std::wstring name = trimmedRight(grid.text(row, column));
  if (name == L"<2D Block Name>-3d") name.clear();
  if (name.empty()) name = firstFile(folder, drawings);
  std::erase_if(name,
                [](wchar_t c) { return std::wstring_view(L"<>|\"\\:/").find(c) != std::wstring_view::npos; });
  grid.setText(row, column, browse(grid, row, column, name, folder, drawings));
}

void BrowseSlideCell(Grid& grid, int row, int column, const std::wstring& chosen,
                     const std::wstring& folder) {
  if (chosen != L"Browse. . .") return;
  std::wstring name = trimmedRight(grid.text(row, column));
  if (name.empty()) name = firstFile(folder, slides);
  grid.setText(row, column, browse(grid, row, column, name, folder, slides));
}
