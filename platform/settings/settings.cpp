#include "platform/settings/settings.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <functional>
#include <mutex>

#include "platform/files/files.h"
#include "platform/files/whole_file.h"
#include "platform/settings/settings_text.h"
#include "platform/text/utf.h"

namespace platform {

namespace {

struct Place {
  std::mutex mutex;
  std::filesystem::path folder;
};

Place& place() {
  static Place instance;
  return instance;
}

std::filesystem::path file() { return settingsFolder() / "settings.txt"; }

/// Keeps other writers out, in this and in other processes, as long as it lives. The kernel takes the
/// lock back however the process ends.
class WriteLock {
 public:
  WriteLock() {
    std::error_code problem;
    std::filesystem::create_directories(settingsFolder(), problem);
    const auto path = settingsFolder() / "settings.lock";
    descriptor_ = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    while (descriptor_ >= 0 && flock(descriptor_, LOCK_EX) != 0) {
      if (errno == EINTR) continue;
      close(descriptor_);
      descriptor_ = -1;
    }
  }
  ~WriteLock() {
    if (descriptor_ >= 0) close(descriptor_);
  }
  WriteLock(const WriteLock&) = delete;
  WriteLock& operator=(const WriteLock&) = delete;
  bool held() const { return descriptor_ >= 0; }

 private:
  int descriptor_ = -1;
};

// Nothing when the store is there but can't be read, so that nobody takes it for an empty one.
std::optional<SettingsText> load() {
  std::error_code problem;
  if (!std::filesystem::exists(file(), problem)) {
    if (problem) return std::nullopt;
    return SettingsText("");
  }
  const std::optional<std::string> text = readWhole(file().native());
  return text ? std::optional(SettingsText(*text)) : std::nullopt;
}

SettingStatus change(const std::function<SettingStatus(SettingsText&)>& edit) {
  const WriteLock lock;
  if (!lock.held()) return SettingStatus::refused;
  std::optional<SettingsText> text = load();
  if (!text) return SettingStatus::refused;
  const SettingStatus status = edit(*text);
  if (status != SettingStatus::done) return status;
  WholeFile target(file().native());
  target.write(text->toText());
  return target.commit() ? SettingStatus::done : SettingStatus::refused;
}

// A section's name must survive its heading.
bool isSectionName(std::wstring_view section) {
  return section.find_first_of(std::wstring_view(L"\n\r\0", 3)) == std::wstring_view::npos;
}

}  // namespace

void setSettingsFolder(std::filesystem::path folder) {
  const std::lock_guard lock(place().mutex);
  place().folder = std::move(folder);
}

std::filesystem::path settingsFolder() {
  const std::lock_guard lock(place().mutex);
  if (place().folder.empty())
    return std::filesystem::path(toUtf8(userFolder(UserFolder::settings))) / "zarbo";
  return place().folder;
}

std::optional<std::wstring> readSetting(std::wstring_view section, std::wstring_view name) {
  const std::optional<SettingsText> text = load();
  return text ? text->value(section, name) : std::nullopt;
}

SettingStatus writeSetting(std::wstring_view section, std::wstring_view name, std::wstring_view value) {
  return change([&](SettingsText& text) {
    if (!text.hasSection(section)) return SettingStatus::missingSection;
    text.setValue(section, name, value);
    return SettingStatus::done;
  });
}

SettingStatus makeSection(std::wstring_view section) {
  if (!isSectionName(section)) return SettingStatus::badName;
  return change([&](SettingsText& text) {
    text.addSection(section);
    return SettingStatus::done;
  });
}

std::optional<std::vector<std::wstring>> subsections(std::wstring_view section) {
  const std::optional<SettingsText> text = load();
  if (!text || !text->hasSection(section)) return std::nullopt;
  return text->subsections(section);
}

std::filesystem::path classLibrary(std::wstring_view classIdInBraces) {
  return toUtf8(readSetting(L"Classes", classIdInBraces).value_or(L""));
}

}  // namespace platform
