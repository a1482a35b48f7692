#include "zarbo/support/byte_list.h"

#include <algorithm>

namespace {

// The decimal number at the start, cut to 32 bits; 0 without digits.
uint32_t takeNumber(std::wstring_view& text) {
  const size_t end = std::min(text.find(L','), text.size());
  uint32_t number = 0;
  for (const wchar_t c : text.substr(0, end)) {
    if (c < L'0' || c > L'9') break;
    number = number * 10 + static_cast<uint32_t>(c - L'0');
  }
  text.remove_prefix(std::min(end + 1, text.size()));
  return number;
}

}  // namespace

std::wstring byteListText(const std::vector<uint8_t>& bytes) {
  std::wstring text = std::to_wstring(bytes.size());
  for (const uint8_t byte : bytes) text += L"," + std::to_wstring(byte);
  return text;
}

std::vector<uint8_t> bytesOfListText(std::wstring_view text) {
  std::vector<uint8_t> bytes;
  for (uint32_t left = takeNumber(text); left != 0 && !text.empty(); --left)
    bytes.push_back(static_cast<uint8_t>(takeNumber(text)));
  return bytes;
}

std::vector<uint8_t> bytesOfText(std::wstring_view text) {
  std::vector<uint8_t> bytes;
  for (const wchar_t c : text) {
    const auto code = static_cast<uint32_t>(c);
    // Signatures count units of 16 bits: a character beyond them is a pair, each half above 255.
    if (code > 0xffff) bytes.push_back(255);
    bytes.push_back(static_cast<uint8_t>(std::min<uint32_t>(code, 255)));
  }
  return bytes;
}
