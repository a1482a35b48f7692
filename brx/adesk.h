#pragma once

#include <cstdint>

/// Basic types of the host interface.

#if defined(_WIN32)
#define BRX_API __declspec(dllimport)
#else
/// Classes whose run-time type information must be one and the same in the host and in the module.
#define BRX_API __attribute__((visibility("default")))
#endif

using ACHAR = wchar_t;

namespace Adesk {
using Boolean = bool;
using Int8 = int8_t;
using Int16 = int16_t;
using Int32 = int32_t;
using Int64 = int64_t;
using UInt8 = uint8_t;
using UInt16 = uint16_t;
using UInt32 = uint32_t;
using UInt64 = uint64_t;
constexpr bool kFalse = false;
constexpr bool kTrue = true;
}  // namespace Adesk

using ads_real = double;
using ads_point = ads_real[3];
/// Names an entity or a selection set to LISP; valid while the drawing is open, no ownership.
using ads_name = int64_t[2];

inline void ads_name_set(const ads_name from, ads_name to) { to[0] = from[0], to[1] = from[1]; }
inline void ads_name_clear(ads_name name) { name[0] = name[1] = 0; }
inline bool ads_name_equal(const ads_name a, const ads_name b) { return a[0] == b[0] && a[1] == b[1]; }
inline bool ads_name_nil(const ads_name name) { return name[0] == 0 && name[1] == 0; }
