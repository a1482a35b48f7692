#include "zarbo/support/user_settings.h"

namespace {

const std::wstring root = L"Software\\Korvane Software\\";

}  // namespace

std::wstring getRegistryValue(const std::wstring& section, const std::wstring& name) {
  return platform::readSetting(root + section, name).value_or(L"");
}

platform::SettingStatus setRegistryValue(const std::wstring& section, const std::wstring& name,
                                         const std::wstring& value) {
  return platform::writeSetting(root + section, name, value);
}
