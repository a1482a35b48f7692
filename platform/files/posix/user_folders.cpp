#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>

#include "platform/files/files.h"
#include "platform/text/utf.h"

namespace platform {

namespace {

std::string variable(const char* name) {
  const char* const value = std::getenv(name);
  return value ? value : "";
}

std::string homeFolder() {
  if (std::string home = variable("HOME"); !home.empty()) return home;
  const passwd* const user = getpwuid(getuid());
  return user && user->pw_dir ? user->pw_dir : "";
}

// The base folders of the desktop's convention: a variable, or a place under the home folder.
std::string baseFolder(const char* name, const char* underHome) {
  std::string folder = variable(name);
  if (!folder.empty() && folder.front() == '/') return folder;  // others are to be ignored
  const std::string home = homeFolder();
  return home.empty() ? "" : home + underHome;
}

// The folders that a person sees are named in a file of lines NAME="$HOME/…".
std::string namedFolder(const std::string& name, const char* underHome) {
  std::ifstream file(baseFolder("XDG_CONFIG_HOME", "/.config") + "/user-dirs.dirs");
  const std::string start = name + "=\"", home = "$HOME";
  for (std::string line; std::getline(file, line);) {
    if (line.compare(0, start.size(), start) != 0) continue;
    std::string value = line.substr(start.size(), line.rfind('"') - start.size());
    if (value.compare(0, home.size(), home) == 0) value = homeFolder() + value.substr(home.size());
    while (value.size() > 1 && value.back() == '/') value.pop_back();
    if (!value.empty() && value.front() == '/') return value;
  }
  const std::string folder = homeFolder();
  return folder.empty() ? "" : folder + underHome;
}

std::string find(UserFolder folder) {
  switch (folder) {
    case UserFolder::home:
      return homeFolder();
    case UserFolder::desktop:
      return namedFolder("XDG_DESKTOP_DIR", "/Desktop");
    case UserFolder::documents:
      return namedFolder("XDG_DOCUMENTS_DIR", "/Documents");
    case UserFolder::pictures:
      return namedFolder("XDG_PICTURES_DIR", "/Pictures");
    case UserFolder::settings:
      return baseFolder("XDG_CONFIG_HOME", "/.config");
    case UserFolder::data:
      return baseFolder("XDG_DATA_HOME", "/.local/share");
    case UserFolder::cache:
      return baseFolder("XDG_CACHE_HOME", "/.cache");
    case UserFolder::state:
      return baseFolder("XDG_STATE_HOME", "/.local/state");
  }
  return {};
}

}  // namespace

std::wstring userFolder(UserFolder folder) { return fromUtf8(find(folder)); }

std::wstring temporaryFolder() {
  std::string folder = variable("TMPDIR");
  if (folder.empty()) folder = "/tmp";
  if (folder.back() != '/') folder += '/';
  return fromUtf8(folder);
}

}  // namespace platform
