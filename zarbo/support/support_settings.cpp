#include "zarbo/support/support_settings.h"

#include "platform/text/digits.h"
#include "zarbo/support/user_settings.h"

namespace {

std::wstring value(const wchar_t* name, const wchar_t* otherwise) {
  const std::wstring text = getRegistryValue(L"Installation", name);
  return text.empty() ? otherwise : text;
}

}  // namespace

SupportSettings supportSettings() {
  SupportSettings settings;
  settings.server = value(L"MailServer", L"tnuq/lpswbof/fybnqmf");
  settings.account = value(L"MailAccount", L"sfqpsut");
  settings.password = value(L"MailPassword", L"opu!b!sfbm!qbttxpse");
  settings.port = readInteger(value(L"MailPort", L"587"));
  settings.trustFile = value(L"MailTrustFile", L"");
  settings.address = value(L"SupportAddress", L"support@korvane.example");
  settings.domain = value(L"SupportDomain", L"korvane.example");
  return settings;
}
