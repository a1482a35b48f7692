#pragma once

#include <string>

#include "platform/settings/settings.h"

/// The system's settings of the user: sections such as "Shared" or "HVAC".

/// "" on any failure.
std::wstring getRegistryValue(const std::wstring& section, const std::wstring& name);
/// A section that isn't there is not created: the call fails and leaves nothing.
platform::SettingStatus setRegistryValue(const std::wstring& section, const std::wstring& name,
                                         const std::wstring& value);
