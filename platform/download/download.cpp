#include "platform/download/download.h"

#include <curl/curl.h>

#include <memory>

#include "platform/files/native_path.h"
#include "platform/files/whole_file.h"
#include "platform/text/utf.h"

namespace platform {

namespace {

struct Transfer {
  WholeFile file;
  int64_t left;
};

size_t receive(char* bytes, size_t size, size_t count, void* context) {
  Transfer& transfer = *static_cast<Transfer*>(context);
  const size_t length = size * count;
  transfer.left -= static_cast<int64_t>(length);
  // Any other number than the given one ends the transfer as failed.
  return transfer.left >= 0 && transfer.file.write({bytes, length}) ? length : length + 1;
}

bool startLibrary() {
  static const bool started = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
  return started;
}

bool isHealthy(CURLcode result) { return result == CURLE_OK; }

bool setLimits(CURL* curl, const DownloadLimits& limits) {
  return isHealthy(
             curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, static_cast<long>(limits.connect.count()))) &&
         isHealthy(curl_easy_setopt(curl, CURLOPT_LOW_SPEED_LIMIT, limits.rate)) &&
         isHealthy(
             curl_easy_setopt(curl, CURLOPT_LOW_SPEED_TIME, static_cast<long>(limits.silence.count()))) &&
         isHealthy(curl_easy_setopt(curl, CURLOPT_TIMEOUT, static_cast<long>(limits.total.count()))) &&
         isHealthy(curl_easy_setopt(curl, CURLOPT_MAXREDIRS, limits.redirects));
}

// Redirects may not leave the web: one that names a local file must not be followed.
bool setRules(CURL* curl) {
  return isHealthy(curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, "http,https,ftp,ftps")) &&
         isHealthy(curl_easy_setopt(curl, CURLOPT_REDIR_PROTOCOLS_STR, "http,https")) &&
         isHealthy(curl_easy_setopt(curl, CURLOPT_FOLLOWLOCATION, 1L)) &&
         isHealthy(curl_easy_setopt(curl, CURLOPT_FAILONERROR, 1L)) &&
         isHealthy(curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L)) &&
         isHealthy(curl_easy_setopt(curl, CURLOPT_SSL_VERIFYPEER, 1L)) &&
         isHealthy(curl_easy_setopt(curl, CURLOPT_SSL_VERIFYHOST, 2L));
}

int tell(void* context, curl_off_t total, curl_off_t come, curl_off_t, curl_off_t) {
  const auto& progress = *static_cast<const DownloadProgress*>(context);
  return progress(come, total) ? 0 : 1;
}

bool setProgress(CURL* curl, const DownloadProgress& progress) {
  if (!progress) return true;
  void* const context = const_cast<DownloadProgress*>(&progress);
  return isHealthy(curl_easy_setopt(curl, CURLOPT_XFERINFOFUNCTION, &tell)) &&
         isHealthy(curl_easy_setopt(curl, CURLOPT_XFERINFODATA, context)) &&
         isHealthy(curl_easy_setopt(curl, CURLOPT_NOPROGRESS, 0L));
}

using Url = std::unique_ptr<CURLU, decltype(&curl_url_cleanup)>;

/// Null for a text that is no URL.
Url parsedUrl(const std::wstring& text) {
  constexpr unsigned flags = CURLU_URLENCODE | CURLU_ALLOW_SPACE | CURLU_GUESS_SCHEME;
  Url url(curl_url(), &curl_url_cleanup);
  if (url && curl_url_set(url.get(), CURLUPART_URL, toUtf8(text).c_str(), flags) != CURLUE_OK) url.reset();
  return url;
}

}  // namespace

bool downloadFile(const std::wstring& url, const std::wstring& file, const DownloadLimits& limits,
                  const DownloadProgress& progress) {
  if (!startLibrary()) return false;
  const std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> curl(curl_easy_init(), &curl_easy_cleanup);
  const std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)> headers(
      curl_slist_append(nullptr, "Cache-Control: no-cache"), &curl_slist_free_all);
  const Url address = parsedUrl(url);
  Transfer transfer{WholeFile(nativePath(file)), limits.bytes};
  if (!curl || !headers || !address || !transfer.file.good() || !setRules(curl.get()) ||
      !setLimits(curl.get(), limits) || !setProgress(curl.get(), progress) ||
      !isHealthy(curl_easy_setopt(curl.get(), CURLOPT_CURLU, address.get())) ||
      !isHealthy(curl_easy_setopt(curl.get(), CURLOPT_HTTPHEADER, headers.get())) ||
      !isHealthy(curl_easy_setopt(curl.get(), CURLOPT_WRITEFUNCTION, &receive)) ||
      !isHealthy(curl_easy_setopt(curl.get(), CURLOPT_WRITEDATA, &transfer)))
    return false;
  return isHealthy(curl_easy_perform(curl.get())) && transfer.file.commit();
}

}  // namespace platform
