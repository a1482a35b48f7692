#include "platform/desktop/desktop.h"
#include "platform/text/letters.h"
#include "zarbo/desktop/host_windows.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"

namespace {

using platform::FileChoice;

void addFilters(FileChoice& choice, const std::wstring& extensions) {
  const bool all = extensions.empty() || extensions == L"*";
  for (size_t at = 0; !all && at <= extensions.size();) {
    const size_t end = std::min(extensions.find(L';', at), extensions.size());
    const std::wstring extension = extensions.substr(at, end - at);
    at = end + 1;
    if (extension.empty()) continue;
    if (choice.defaultExtension.empty()) choice.defaultExtension = extension;
    choice.filters.emplace_back(upperCased(extension) + L" Files (*." + extension + L")", L"*." + extension);
  }
  choice.filters.emplace_back(L"All Files (*.*)", L"*.*");
}

// When saving, a path that doesn't end in a separator proposes its last part as the name.
void setPlace(FileChoice& choice, const std::wstring& path) {
  choice.folder = path;
  if (choice.open || path.empty() || path.back() == L'\\' || path.back() == L'/') return;
  const size_t last = path.find_last_of(L"\\/");
  choice.name = last == std::wstring::npos ? path : path.substr(last + 1);
  choice.folder = last == std::wstring::npos ? L"" : path.substr(0, last);
}

}  // namespace

int xFolderDialog() {
  acedRetNil();
  LispArgs args;
  std::wstring title, initial;
  if (!getString(args.cursor, title) || !getString(args.cursor, initial)) return wrongType;
  const auto chosen = platform::desktop().chooseFolder(title, initial);
  if (chosen) acedRetStr(chosen->c_str());
  return done;
}

int cFileDialog() {
  acedRetNil();
  LispArgs args;
  FileChoice choice;
  std::wstring path, extensions;
  if (!args.cursor || !getFlag(args.cursor, choice.open) || !getString(args.cursor, choice.title) ||
      !getString(args.cursor, path) || !getString(args.cursor, extensions))
    return wrongType;
  getFlag(args.cursor, choice.overwritePrompt);
  getFlag(args.cursor, choice.mustExist);
  addFilters(choice, extensions);
  setPlace(choice, path);
  const auto chosen = platform::desktop().chooseFile(choice);
  if (chosen) acedRetStr(chosen->c_str());
  return done;
}
