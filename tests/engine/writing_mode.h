#pragma once

#include <string>

#include "platform/settings/settings.h"
#include "tests/engine/engine_support.h"

/// The installation's way of writing, in a store of settings of its own, while it lives.
class WritingMode {
 public:
  WritingMode(const std::string& settings, const std::wstring& mode) : before_(platform::settingsFolder()) {
    platform::setSettingsFolder(settings);
    const std::wstring section = L"Software\\Korvane Software\\Installation";
    EXPECT_EQ(platform::makeSection(section), platform::SettingStatus::done);
    EXPECT_EQ(platform::writeSetting(section, L"DatabaseWrites", mode), platform::SettingStatus::done);
  }
  ~WritingMode() { platform::setSettingsFolder(before_); }
  WritingMode(const WritingMode&) = delete;
  WritingMode& operator=(const WritingMode&) = delete;

 private:
  std::filesystem::path before_;
};

/// Asks for all that was answered to be on the disk.
inline bool settled(TestEngine& engine) {
  ComPtr<IZbDurability> durability;
  VARIANT_BOOL ok = VARIANT_FALSE;
  engine->QueryInterface(interfaceId<IZbDurability>, durability.putVoid());
  if (durability) durability->Settle(&ok);
  return ok != VARIANT_FALSE;
}
