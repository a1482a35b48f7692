#pragma once

#include <string>
#include <vector>

/// A report that is not mailed but saved on the user's desktop, to be sent by hand.
struct DesktopReport {
  std::wstring archiveName;
  std::wstring text;
  std::wstring supportAddress;
};

/// Writes the text into a file, adds that to the attachments, where it is not listed yet, and packs them all.
/// Tells the user how it went, and shows the archive by the application's "startapp".
void saveReportToDesktop(const DesktopReport& report, std::vector<std::wstring>& attachments);
