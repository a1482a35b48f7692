#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

/// Work that may crash, eat memory or never end, done in a process of its own that costs this one nothing.

using Tell = std::function<void(std::string_view bytes)>;

struct IsolatedEnd {
  enum class Kind {
    returned,      ///< `status` is what the work answered
    crashed,       ///< `reason` tells by what
    silent,        ///< it told nothing for so long that it was ended
    outputClosed,  ///< whoever read its standard output stopped; `status` is a shell's for that
    notStarted,    ///< `reason` tells why
  };
  Kind kind = Kind::returned;
  int status = 0;
  std::string reason;
};

struct IsolatedLimits {
  std::chrono::milliseconds silence;
  size_t memory;  ///< bytes of address space
};

/// Does `work`, which must not throw, in a copy of this process. What it tells comes to `heard` as bytes, not
/// necessarily in the same pieces. It has the standard output; what it writes to standard error is dropped.
IsolatedEnd runIsolated(const std::function<int(const Tell&)>& work, const Tell& heard,
                        const IsolatedLimits& limits);
