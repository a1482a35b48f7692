#include "zarbo/support/report_text.h"

#include <algorithm>
#include <cstddef>

#include "platform/text/letters.h"
#include "platform/text/trim.h"

namespace {

constexpr std::ptrdiff_t longestWords = 100;

bool isAddressLetter(wchar_t c) {
  return (c >= L'0' && c <= L'9') || (c >= L'A' && c <= L'Z') || c == L'_' || c == L'.' || c == L'@' ||
         c == L'-';
}

AddressFault formFault(const std::wstring& email, const std::wstring& domain) {
  const size_t at = email.find(L'@');
  if (at == std::wstring::npos || email.find(L'@', at + 1) != std::wstring::npos)
    return AddressFault::invalid;
  const std::wstring upper = upperCased(email);
  if (upper.substr(at) == L"@" + upperCased(domain)) return AddressFault::supportsOwn;
  const size_t point = upper.rfind(L'.');
  if (point == std::wstring::npos || point < at) return AddressFault::invalid;
  return std::all_of(upper.begin(), upper.end(), isAddressLetter) ? AddressFault::none
                                                                  : AddressFault::invalid;
}

}  // namespace

std::wstring titleOfReport(int mode) {
  switch (static_cast<ReportMode>(mode)) {
    case ReportMode::project:
      return L"Send Project to Korvane Support";
    case ReportMode::bug:
      return L"Send Bug to Korvane Support";
    case ReportMode::allDatabases:
      return L"Send Master and Standards Databases to Korvane Support";
    case ReportMode::standardsDatabases:
      return L"Send Standards Databases to Korvane Support";
  }
  return L"Send to Korvane Support";
}

std::wstring subjectOfReport(int mode, const std::wstring& words) {
  const auto kind = static_cast<ReportMode>(mode);
  std::wstring subject = kind == ReportMode::project ? L"KV Project"
                         : kind == ReportMode::bug   ? L"KV Bug"
                                                     : L"KV Email";
  if (words.empty()) return subject;
  std::ptrdiff_t count = std::min(longestWords, static_cast<std::ptrdiff_t>(words.size()));
  const auto before = [&](size_t place) {
    return place != std::wstring::npos && static_cast<std::ptrdiff_t>(place) < count;
  };
  // The carriage return before the line feed goes, too; a line feed at the very start leaves nothing.
  if (const size_t lineFeed = words.find(L'\n'); before(lineFeed))
    count = static_cast<std::ptrdiff_t>(lineFeed) - 1;
  if (const size_t end = words.find_first_of(L"?!."); before(end)) count = static_cast<std::ptrdiff_t>(end);
  subject += L": ";
  if (count > 0) subject += words.substr(0, static_cast<size_t>(count));
  return subject;
}

AddressFault addressFault(const std::wstring& email, const std::wstring& again, const std::wstring& domain) {
  if (email.empty()) return AddressFault::missing;
  const AddressFault fault = formFault(email, domain);
  if (fault != AddressFault::none) return fault;
  return email == again ? AddressFault::none : AddressFault::unlike;
}

std::wstring messageOf(AddressFault fault) {
  switch (fault) {
    case AddressFault::none:
      return {};
    case AddressFault::invalid:
      return L"Invalid e-mail address.";
    case AddressFault::missing:
      return L"An e-mail address is needed.";
    case AddressFault::unlike:
      return L"The e-mail addresses do not match.";
    case AddressFault::supportsOwn:
      return L"Enter your email address. We will use this email address to reply to you.";
  }
  return {};
}

std::wstring archiveNameOf(const std::wstring& userName, const std::wstring& suffix) {
  std::wstring name(trimmed(userName));
  std::erase_if(
      name, [](wchar_t c) { return std::wstring_view(L"\\/?:*\"<>|").find(c) != std::wstring_view::npos; });
  if (name.empty()) name = L"KV Attachment";
  if (!suffix.empty()) name += L" " + suffix;
  return name + L".zip";
}
