#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace platform {

/// What a download may take before it is given up.
struct DownloadLimits {
  std::chrono::seconds connect{20};
  /// Without a byte coming in.
  std::chrono::seconds silence{30};
  std::chrono::seconds total{3600};
  int64_t bytes = int64_t{4} << 30;
  long redirects = 10;
};

/// Fetches the URL (http, https, ftp), past caches, with certificates verified, into the file, which
/// appears, or is replaced, only when the transfer is complete and the server didn't report an error.
bool downloadFile(const std::wstring& url, const std::wstring& file, const DownloadLimits& limits = {});

}  // namespace platform
