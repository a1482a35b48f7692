#include <algorithm>
#include <iterator>
#include <optional>
#include <vector>

#include "platform/desktop/desktop.h"
#include "platform/files/files.h"
#include "zarbo/desktop/host_windows.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"

namespace {

using platform::UserFolder;

/// A folder of the user with a place in it, or a fixed place of the machine.
struct FolderRow {
  std::wstring_view name;
  std::optional<UserFolder> base;
  const wchar_t* place;
};
const FolderRow folderRows[] = {
    {L"ADMINTOOLS", UserFolder::data, L"/applications"},
    {L"APPDATA", UserFolder::settings, L""},
    {L"COMMON_ADMINTOOLS", std::nullopt, L"/usr/share/applications"},
    {L"COMMON_APPDATA", std::nullopt, L"/var/lib"},
    {L"COMMON_DOCUMENTS", std::nullopt, L"/usr/share/doc"},
    {L"COOKIES", UserFolder::cache, L""},
    {L"DESKTOP", UserFolder::desktop, L""},
    // No folder but a flag; beside it stands the number of the desktop's folder, 0.
    {L"FLAG_CREATE", UserFolder::desktop, L""},
    {L"HISTORY", UserFolder::state, L""},
    {L"INTERNET_CACHE", UserFolder::cache, L""},
    {L"LOCAL_APPDATA", UserFolder::data, L""},
    {L"MYPICTURES", UserFolder::pictures, L""},
    {L"PERSONAL", UserFolder::documents, L""},
    {L"PROGRAM_FILES", std::nullopt, L"/opt"},
    {L"PROGRAM_FILES_COMMON", std::nullopt, L"/usr/lib"},
    {L"SYSTEM", std::nullopt, L"/usr/lib"},
    {L"WINDOWS", std::nullopt, L"/usr"},
};

std::wstring pathOf(const std::wstring& name) {
  const auto row = std::find_if(std::begin(folderRows), std::end(folderRows),
                                [&](const FolderRow& each) { return each.name == name; });
  if (row == std::end(folderRows)) return {};
  if (!row->base) return row->place;
  const std::wstring folder = platform::userFolder(*row->base);
  return folder.empty() ? folder : folder + row->place;
}

/// Results of opening above this are success.
constexpr int highestOpenFailure = 32;

}  // namespace

int kvShGetFolderPath() {
  acedRetNil();
  LispArgs args;
  std::wstring name;
  if (!getString(args.cursor, name)) return wrongType;
  const std::wstring path = pathOf(name);
  if (!path.empty()) acedRetStr(path.c_str());
  return done;
}

int kvShOpenFolderAndSelect() {
  acedRetNil();
  LispArgs args;
  std::wstring folder, file;
  if (!getString(args.cursor, folder)) return wrongType;
  std::vector<std::wstring> files;
  if (skipListBegin(args.cursor)) {
    while (args.cursor && args.cursor->restype != RTLE) {
      if (!getString(args.cursor, file)) {
        args.cursor = args.cursor->rbnext;
      } else if (!file.empty()) {
        files.push_back(file);
      }
    }
  }
  if (files.empty()) {
    platform::desktop().openDocument(L"explore", folder);
  } else {
    platform::desktop().showInFolder(folder, files);
  }
  return done;
}

int kvShellExecute() {
  acedRetNil();
  LispArgs args;
  // How the window shall appear is for the desktop's opener to decide here, but the word must be given.
  std::wstring verb, file, showMode;
  if (!getString(args.cursor, verb) || !getString(args.cursor, file) || !getString(args.cursor, showMode))
    return done;
  if (platform::desktop().openDocument(verb, file) > highestOpenFailure) acedRetT();
  return done;
}

int kvShowHelp() {
  acedRetNil();
  LispArgs args;
  std::wstring topic;
  if (!getString(args.cursor, topic)) return wrongType;
  platform::desktop().showHelp(topic);
  acedRetT();
  return done;
}
