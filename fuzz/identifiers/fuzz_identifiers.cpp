// Compressed identifiers: every text is refused or stands for one GUID, and every GUID comes back from its
// texts.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string>

#include "platform/text/utf.h"
#include "zarbo/support/identifiers.h"

namespace {

void check(bool holds) {
  if (!holds) std::abort();
}

void tryText(const std::wstring& text) {
  wchar_t back[23];
  GUID guid{};
  if (string64ToGuid(text, guid)) check(guidToString64(guid, back, std::size(back)) == 22);
  if (string85ToGuid(text, guid)) {
    check(guidToString85(&guid, back, std::size(back)) == 20 && text == back);
  }
  wchar_t other[39];
  string64ToBraceString(text, other, std::size(other));
  string64ToString85(text, other, text.size());
  string85ToString64(text, other, text.size() % 39);
}

void tryGuid(const uint8_t* bytes) {
  GUID guid, back{};
  std::memcpy(&guid, bytes, sizeof guid);
  wchar_t text[39];
  check(guidToString64(guid, text, 23) == 22 && string64ToGuid(text, back) && back == guid);
  check(guidToString85(&guid, text, 21) == 20 && string85ToGuid(text, back) && back == guid);
  check(guidToBraceString(guid, text, 39) == 38);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size > 200) return 0;
  tryText(fromUtf8({reinterpret_cast<const char*>(data), size}));
  if (size >= sizeof(GUID)) tryGuid(data);
  return 0;
}
