#pragma once

#include <string>

#include "platform/desktop/grid.h"

/// Cells of block or slide names, with a list entry that lets the person look for a file. Their choice
/// handlers call these with the chosen text; any other entry stays as it was chosen. Without a file, the cell
/// keeps what it held before the edit.

/// The choices of such a column.
inline constexpr wchar_t browseChoices[] = L"|Browse. . .";

/// For "Browse. . ." and "Select custom block. . .": asks for a drawing, starting from the cell's name, or
/// else the first drawing of the folder.
void BrowseBlockCell(platform::Grid& grid, int row, int column, const std::wstring& chosen,
                     const std::wstring& folder);
/// The same for "Browse. . ." and slides.
void BrowseSlideCell(platform::Grid& grid, int row, int column, const std::wstring& chosen,
                     const std::wstring& folder);
