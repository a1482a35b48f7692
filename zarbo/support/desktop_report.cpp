#include "zarbo/support/desktop_report.h"

#include <algorithm>

#include "brx/lisp_calls.h"
#include "platform/archive/archive_writer.h"
#include "platform/desktop/desktop.h"
#include "platform/files/files.h"
#include "platform/files/native_path.h"
#include "platform/files/whole_file.h"
#include "platform/text/utf.h"
#include "zarbo/frame/application_call.h"
#include "zarbo/support/paths.h"

namespace {

using platform::ArchiveWriter;

// A failure here is silent: the archive just goes without the text.
void addTextFile(const std::wstring& text, std::vector<std::wstring>& attachments) {
  std::wstring folder;
  if (!getPrivateTempFolder(folder) || text.empty()) return;
  const std::wstring path = folder + L"kv_error.txt";
  platform::WholeFile file(platform::nativePath(path));
  file.write(toUtf8(text));
  if (!file.commit()) return;
  // Of an earlier save the file may be there; the archive takes no path twice.
  if (std::find(attachments.begin(), attachments.end(), path) == attachments.end())
    attachments.push_back(path);
}

/// Without a closing separator; "" when it isn't there.
std::wstring desktopFolder() {
  const std::wstring folder = platform::userFolder(platform::UserFolder::desktop);
  return platform::folderExists(folder) ? folder : L"";
}

// Empty, or what failed.
std::wstring pack(ArchiveWriter& writer, const std::wstring& archive,
                  const std::vector<std::wstring>& attachments) {
  if (!writer.create(archive)) return L"Failed to create new zip folder.";
  for (const std::wstring& each : attachments) {
    if (!writer.append(each, true)) return L"An error occurred while compressing attachments.";
  }
  return writer.writeAndClose() ? L"" : L"An error occurred while closing the zip file.";
}

void showInExplorer(const std::wstring& archive) {
  ApplicationCall(L"startapp").text(L"explorer.exe /select," + archive).invoke();
}

}  // namespace

void saveReportToDesktop(const DesktopReport& report, std::vector<std::wstring>& attachments) {
  const std::wstring file = L"Send to " + report.supportAddress + L"--" + report.archiveName;
  addTextFile(report.text, attachments);
  ArchiveWriter writer;
  writer.setMendNames(true);
  const std::wstring folder = desktopFolder(), archive = folder + platform::pathSeparator() + file;
  const std::wstring failure =
      folder.empty() ? L"Unable to locate desktop path." : pack(writer, archive, attachments);
  if (failure.empty()) {
    platform::desktop().messageBox({L"EMAIL NOT SENT!",
                                    L"EMAIL NOT SENT!\n\nFile \"" + file +
                                        L"\" was saved to the desktop but has not been sent.\n"
                                        L"\nManually send the file to \"" +
                                        report.supportAddress + L"\".",
                                    unsigned{platform::okBox} | unsigned{platform::exclamationIcon}});
  }
  showInExplorer(archive);  // after a failure, too
  if (failure.empty()) return;
  writer.saveLastError(L"kv_ziperror.xml");
  platform::desktop().messageBox(
      {L"Korvane", failure, unsigned{platform::okBox} | unsigned{platform::stopIcon}});
}
