#include "zarbo/support/identifiers.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>

#include "platform/com/automation.h"

namespace {

constexpr std::wstring_view symbols64 = L"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_$";
constexpr std::wstring_view symbols85 =
    L"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz!#$%&^|*+,-./:;<=>?~`@_";

constexpr size_t length64 = 22, length85 = 20;
/// Digits of the pieces of the 22 symbols.
constexpr size_t pieces64[] = {2, 4, 4, 4, 4, 4};
constexpr size_t digits85 = 5;

bool writePiece(uint32_t value, size_t digits, std::wstring_view symbols, wchar_t* text) {
  for (size_t i = digits; i-- > 0; value /= static_cast<uint32_t>(symbols.size()))
    text[i] = symbols[value % symbols.size()];
  return value == 0;
}

bool readPiece(std::wstring_view text, std::wstring_view symbols, uint32_t& value) {
  uint64_t sum = 0;
  for (const wchar_t c : text) {
    const size_t digit = symbols.find(c);
    if (digit == std::wstring_view::npos) return false;
    sum = sum * symbols.size() + digit;
  }
  value = static_cast<uint32_t>(sum);
  return sum <= std::numeric_limits<uint32_t>::max();
}

constexpr uint8_t byteOf(uint32_t value, int index) { return static_cast<uint8_t>(value >> (8 * index)); }

uint32_t lowestFirst(const uint8_t* bytes) {
  return bytes[0] | uint32_t{bytes[1]} << 8 | uint32_t{bytes[2]} << 16 | uint32_t{bytes[3]} << 24;
}

}  // namespace

int guidToString64(const GUID& guid, wchar_t* text, size_t capacity) {
  if (!text || capacity < length64 + 1) return 0;
  const uint8_t* const d = guid.Data4;
  const uint32_t numbers[] = {guid.Data1 >> 24,
                              guid.Data1 & 0xFFFFFF,
                              guid.Data2 * 256u + guid.Data3 / 256u,
                              guid.Data3 % 256u * 65536u + d[0] * 256u + d[1],
                              d[2] * 65536u + d[3] * 256u + d[4],
                              d[5] * 65536u + d[6] * 256u + d[7]};
  for (size_t i = 0; i < std::size(numbers); ++i) {
    if (!writePiece(numbers[i], pieces64[i], symbols64, text)) return 0;
    text += pieces64[i];
  }
  *text = L'\0';
  return static_cast<int>(length64);
}

bool string64ToGuid(std::wstring_view text, GUID& guid) {
  if (text.size() != length64) return false;
  uint32_t n[std::size(pieces64)];
  for (size_t i = 0; i < std::size(pieces64); ++i) {
    if (!readPiece(text.substr(0, pieces64[i]), symbols64, n[i])) return false;
    text.remove_prefix(pieces64[i]);
  }
  if (n[0] > 255) return false;
  guid.Data1 = n[0] << 24 | n[1];
  guid.Data2 = static_cast<uint16_t>(n[2] / 256);
  guid.Data3 = static_cast<uint16_t>(n[2] % 256 * 256 + n[3] / 65536);
  const uint8_t bytes[] = {byteOf(n[3], 1), byteOf(n[3], 0), byteOf(n[4], 2), byteOf(n[4], 1),
                           byteOf(n[4], 0), byteOf(n[5], 2), byteOf(n[5], 1), byteOf(n[5], 0)};
  std::copy(std::begin(bytes), std::end(bytes), guid.Data4);
  return true;
}

int guidToString85(const GUID* guid, wchar_t* text, size_t capacity) {
  if (!guid || !text || capacity < length85 + 1) return 0;
  const uint32_t numbers[] = {guid->Data1, guid->Data2 * 65536u + guid->Data3, lowestFirst(guid->Data4),
                              lowestFirst(guid->Data4 + 4)};
  for (const uint32_t number : numbers) {
    writePiece(number, digits85, symbols85, text);
    text += digits85;
  }
  *text = L'\0';
  return static_cast<int>(length85);
}

bool string85ToGuid(std::wstring_view text, GUID& guid) {
  if (text.size() != length85) return false;
  uint32_t n[4];
  for (size_t i = 0; i < 4; ++i) {
    if (!readPiece(text.substr(i * digits85, digits85), symbols85, n[i])) return false;
  }
  guid.Data1 = n[0];
  guid.Data2 = static_cast<uint16_t>(n[1] >> 16);
  guid.Data3 = static_cast<uint16_t>(n[1]);
  for (int i = 0; i < 8; ++i) guid.Data4[i] = byteOf(n[2 + i / 4], i % 4);
  return true;
}

int guidToBraceString(const GUID& guid, wchar_t* text, size_t capacity) {
  constexpr int needed = 39;
  if (capacity < needed) return 0;
  return StringFromGUID2(guid, text, needed) == 0 ? 0 : needed - 1;
}

int createGuidString64(wchar_t* text, size_t capacity) {
  GUID guid{};
  CoCreateGuid(&guid);
  return guid == GUID{} ? 0 : guidToString64(guid, text, capacity);
}

int string64ToBraceString(std::wstring_view source, wchar_t* text, size_t capacity) {
  GUID guid;
  return string64ToGuid(source, guid) ? guidToBraceString(guid, text, capacity) : 0;
}

int string64ToString85(std::wstring_view source, wchar_t* text, size_t capacity) {
  GUID guid;
  return string64ToGuid(source, guid) ? guidToString85(&guid, text, capacity) : 0;
}

int string85ToString64(std::wstring_view source, wchar_t* text, size_t capacity) {
  GUID guid;
  return string85ToGuid(source, guid) ? guidToString64(guid, text, capacity) : 0;
}
