#include "zarbo/desktop/host_windows.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "platform/desktop/desktop.h"
#include "platform/settings/settings.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"
#include "zarbo/frame/list_builder.h"

namespace {

constexpr std::wstring_view currentUser = L"HKEY_CURRENT_USER";

std::vector<std::wstring> subkeys(std::wstring_view key) {
  const size_t end = std::min(key.find(L'\\'), key.size());
  const std::wstring_view root = key.substr(0, end);
  // The other roots are known, too, but hold nothing: all settings are the user's.
  if (root != currentUser) return {};
  return platform::subsections(key.substr(std::min(end + 1, key.size())))
      .value_or(std::vector<std::wstring>());
}

}  // namespace

int regEnumKey() {
  acedRetNil();
  LispArgs args;
  std::wstring key;
  if (!getString(args.cursor, key)) return done;
  const std::vector<std::wstring> names = subkeys(key);
  if (names.empty()) return done;
  LispList list;
  beginList(list);
  for (const std::wstring& name : names) appendValue(list, name);
  endListAndReturn(list);
  return done;
}

int screenWidth() {
  retNumber(platform::desktop().screenSize().first);
  return done;
}

int screenHeight() {
  retNumber(platform::desktop().screenSize().second);
  return done;
}

int getComputerName() {
  acedRetNil();
  const auto name = platform::computerName();
  if (name && !name->empty()) acedRetStr(name->c_str());
  return done;
}

int pathIsNetworkPath() {
  acedRetNil();
  LispArgs args;
  std::wstring path;
  if (!getString(args.cursor, path)) return wrongType;
  // Two separators and a name: a share on another machine.
  const auto isSeparator = [](wchar_t c) { return c == L'\\' || c == L'/'; };
  if (path.size() > 2 && isSeparator(path[0]) && isSeparator(path[1]) && !isSeparator(path[2])) acedRetT();
  return done;
}
