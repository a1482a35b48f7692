#pragma once

#include <string>

/// The texts of a support report.

/// What the report is about, by the number that the application gives.
enum class ReportMode : int { project = 0, bug = 1, allDatabases = 4, standardsDatabases = 5 };

std::wstring titleOfReport(int mode);
/// The prefix for the mode, and the beginning of the words that the user has added: up to 100 characters, or
/// the end of the first line or sentence. Line breaks are CR LF.
std::wstring subjectOfReport(int mode, const std::wstring& words);

/// Why the user's address can't be used.
enum class AddressFault : int { none = 0, invalid = 1, missing = 2, unlike = 3, supportsOwn = 4 };
/// Both trimmed. `domain` is that of the support mailbox, without "@".
AddressFault addressFault(const std::wstring& email, const std::wstring& again, const std::wstring& domain);
/// For people; "" for no fault.
std::wstring messageOf(AddressFault fault);

/// Of the report's archive, from the user's name and the suffix of the application.
std::wstring archiveNameOf(const std::wstring& userName, const std::wstring& suffix);
