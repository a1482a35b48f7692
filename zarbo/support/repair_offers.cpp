#include "zarbo/support/repair_offers.h"

#include <string>

#include "brx/lisp_calls.h"
#include "platform/desktop/desktop.h"

namespace {

using platform::BoxAnswer;

constexpr int dialogNotMade = -1;
constexpr int dialogAborted = 3;
/// What `openDocument` gives at most when it failed.
constexpr int highestOpenFailure = 32;

const std::wstring support = L"Korvane Software technical support";
const std::wstring phone = L"Telephone: (555) 010-0100";

struct Installer {
  std::wstring file;
  std::wstring address;
};
const Installer dialogRepair = {L"Partpack.exe", L"https://download.korvane.example/Partpack.exe"};
const Installer driverRepair = {L"Mendpack.exe", L"https://download.korvane.example/Mendpack.exe"};

BoxAnswer show(const std::wstring& text, unsigned style) {
  const bool isError = style & platform::stopIcon;
  return platform::desktop().messageBox({isError ? L"Korvane Error" : L"Korvane", text, style});
}

void download(const Installer& installer) {
  if (platform::desktop().openDocument(L"OPEN", installer.address) <= highestOpenFailure) {
    acutPrintf(L"\nError downloading %s", installer.address.c_str());
    acutPrintf(L"\nContact %s.", support.c_str());
    show(L"Error downloading " + installer.file + L".\nContact " + support + L".\n" + phone, platform::okBox);
    return;
  }
  acutPrintf(L"\nDownloading %s", installer.address.c_str());
  show(L"Finish downloading " + installer.file + L".\nClose AutoCAD.\nRun " + installer.file +
           L".\nRestart AutoCAD.\n\nIf you continue to have problems, contact " + support + L".\n" + phone,
       platform::okBox);
}

}  // namespace

int dialogGuard(int dialogResult) {
  if (dialogResult != dialogNotMade && dialogResult != dialogAborted) return dialogResult;
  const BoxAnswer answer = show(
      L"Dialog box could not be created.\nComponents need to be installed.\n"
      L"Would you like to download a fix to this error?",
      platform::yesNoBox);
  if (answer == BoxAnswer::yes) download(dialogRepair);
  return dialogResult;
}

void databaseDriverFailure() {
  const BoxAnswer answer =
      show(L"Error loading database drivers.\nWould you like to download a fix to this error?",
           unsigned{platform::yesNoBox} | unsigned{platform::stopIcon});
  if (answer == BoxAnswer::yes) download(driverRepair);
}
