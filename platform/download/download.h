#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

namespace platform {

/// What a download may take before it is given up.
struct DownloadLimits {
  std::chrono::seconds connect{20};
  /// During which less comes in than `rate` asks.
  std::chrono::seconds silence{30};
  std::chrono::seconds total{3600};
  int64_t bytes = int64_t{4} << 30;
  long redirects = 10;
  /// Bytes a second.
  long rate = 1000;
};

/// Told, about once a second or more often, how many bytes have come and how many there will be, 0 when the
/// server doesn't say. False ends the transfer as failed.
using DownloadProgress = std::function<bool(int64_t come, int64_t total)>;

/// Fetches the URL (http, https, ftp), past caches, with certificates verified, into the file, which
/// appears, or is replaced, only when the transfer is complete and the server didn't report an error.
/// Blanks and letters beyond ASCII in the URL are encoded.
bool downloadFile(const std::wstring& url, const std::wstring& file, const DownloadLimits& limits = {},
                  const DownloadProgress& progress = {});

}  // namespace platform
