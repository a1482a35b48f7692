#pragma once

#include "platform/com/types.h"

/// The companion object of the installation: started with the module and stopped with it. It may be
/// missing, and nothing else is asked of it.

inline constexpr CLSID companionClass = {
    0x81D246CF, 0x8E50, 0x41BF, {0x8B, 0x52, 0x1C, 0x76, 0x70, 0x2B, 0xAA, 0x2A}};

struct IZbCompanion : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE Start() = 0;
  virtual HRESULT STDMETHODCALLTYPE Stop() = 0;
};
template <>
inline constexpr IID interfaceId<IZbCompanion> = {
    0x3E1EF640, 0xCAE1, 0x431C, {0xA5, 0x12, 0xA6, 0x10, 0xDA, 0x73, 0xE9, 0x49}};

/// Creates and starts it; quiet when its class isn't there. A failing `Start` throws `ComError`.
void startCompanion();
/// Stops and releases it, when there is one.
void stopCompanion();
