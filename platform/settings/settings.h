#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Per-user text values by section and name: what a registry's branch of the current user is to other
/// systems. Sections form a tree, their names joined by `\`; names of sections and values are without
/// regard to case. A change is on the disk, or not made at all, when the call returns, and processes
/// may change values at the same time.

/// The folder of the store; it is made at the first change. By default the folder "zarbo" in the
/// user's folder for settings.
void setSettingsFolder(std::filesystem::path folder);
std::filesystem::path settingsFolder();

/// Results of a change, with the numbers of the registry's calls.
enum class SettingStatus : int { done = 0, missingSection = 2, refused = 5, badName = 87 };

/// Nothing when section or value are missing or the store can't be read.
std::optional<std::wstring> readSetting(std::wstring_view section, std::wstring_view name);
/// Opens the section, does not create it.
SettingStatus writeSetting(std::wstring_view section, std::wstring_view name, std::wstring_view value);
/// Creates the section and those above it; one that is there stays as it is.
SettingStatus makeSection(std::wstring_view section);

/// Names of the sections right under this one ("" for the top), in the order of their capital
/// letters; nothing when the section is missing.
std::optional<std::vector<std::wstring>> subsections(std::wstring_view section);

/// The library that the section "Classes" names for a class of objects, by its identifier in braces:
/// `"{4D6FDF05-…}"="/opt/…/engine.so"`. Empty when it names none.
std::filesystem::path classLibrary(std::wstring_view classIdInBraces);

}  // namespace platform
