#pragma once

#include <optional>
#include <string>

#include "platform/desktop/grid.h"

/// Routines on the rows of dialogs' grids. A hidden counter column holds the database's key of a row, "-1" in
/// a row that isn't stored yet.

/// Adds a row, before `before` or at the end: from the name column on a copy of the row above it, with "-1"
/// as the counter, and a name that no other row has: "New Layer", else "New Layer (1)" and so on. The new row
/// gets the focus. Gives the row.
int AddUniqueRow(platform::Grid& grid, const std::wstring& name, int nameColumn, int counterColumn,
                 bool grabFocus, std::optional<int> before = std::nullopt);

/// Removes the row that has the focus; the row that takes its place gets it, or else the one before.
void RemoveSelectedRow(platform::Grid& grid);

/// Copies a row below the last of those that follow it with the same text in `column`, texts and images of
/// shown columns, or of all; the copy has "-1" as the counter, and the focus. Gives the new row, or -1 for a
/// row or column that can't be copied, as the header can't.
int CopyRowBelow(platform::Grid& grid, int row, int column, int counterColumn, bool hiddenToo);

/// Adds a row at level 1 that bears a title across the first two columns, and in column 2.
void AddCategoryRow(platform::Grid& grid, const std::wstring& title);
/// Adds a row at level 2 whose column 1 is a text or a choice of "Yes" and "No". Gives the row.
int AddSettingRow(platform::Grid& grid, const std::wstring& label, bool isYesNo);

/// The entries of yes/no cells.
inline constexpr wchar_t yesNoChoices[] = L"Yes|No";
