#ifndef _WIN32

#include <sys/random.h>
#include <cerrno>
#include <cwchar>

#include "platform/com/automation.h"
#include "platform/text/hex.h"

namespace {

// Reads 2 × `bytes` hex digits, most significant first, and moves on; false on any other character.
bool takeHex(const wchar_t*& text, int bytes, uint64_t& value) {
  value = 0;
  for (int i = 0; i < 2 * bytes; ++i) {
    const int digit = hexDigit(*text);
    if (digit < 0) return false;
    value = value << 4 | static_cast<uint64_t>(digit);
    ++text;
  }
  return true;
}

}  // namespace

int StringFromGUID2(const GUID& guid, OLECHAR* text, int capacity) {
  constexpr int length = 39;
  if (!text || capacity < length) return 0;
  const uint8_t* d = guid.Data4;
  std::swprintf(text, length, L"{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}", guid.Data1,
                static_cast<unsigned>(guid.Data2), static_cast<unsigned>(guid.Data3), d[0], d[1], d[2], d[3],
                d[4], d[5], d[6], d[7]);
  return length;
}

HRESULT CLSIDFromString(const OLECHAR* text, CLSID* guid) {
  if (!text || !guid) return E_INVALIDARG;
  *guid = GUID{};
  uint64_t one, two, three, four, five;
  auto take = [&](wchar_t c) { return *text == c ? (++text, true) : false; };
  const bool good = take(L'{') && takeHex(text, 4, one) && take(L'-') && takeHex(text, 2, two) &&
                    take(L'-') && takeHex(text, 2, three) && take(L'-') && takeHex(text, 2, four) &&
                    take(L'-') && takeHex(text, 6, five) && take(L'}') && *text == 0;
  if (!good) return CO_E_CLASSSTRING;
  guid->Data1 = static_cast<uint32_t>(one);
  guid->Data2 = static_cast<uint16_t>(two);
  guid->Data3 = static_cast<uint16_t>(three);
  for (int i = 0; i < 2; ++i) guid->Data4[i] = static_cast<uint8_t>(four >> (8 - 8 * i));
  for (int i = 0; i < 6; ++i) guid->Data4[2 + i] = static_cast<uint8_t>(five >> (40 - 8 * i));
  return S_OK;
}

HRESULT CoCreateGuid(GUID* guid) {
  if (!guid) return E_POINTER;
  char* bytes = reinterpret_cast<char*>(guid);
  for (size_t done = 0; done < sizeof *guid;) {
    const ssize_t got = getrandom(bytes + done, sizeof *guid - done, 0);
    if (got < 0 && errno != EINTR) return E_FAIL;
    if (got > 0) done += static_cast<size_t>(got);
  }
  guid->Data3 = static_cast<uint16_t>((guid->Data3 & 0x0FFF) | 0x4000);  // version 4: random
  guid->Data4[0] = static_cast<uint8_t>((guid->Data4[0] & 0x3F) | 0x80);
  return S_OK;
}

#endif
