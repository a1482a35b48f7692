#include "engine/text/collation.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

#include "platform/text/utf.h"

namespace {

struct CaseRun {
  uint32_t first, last;
  int stride, distance;
};

constexpr CaseRun lowerRuns[] = {
#include "engine/text/case_lower.inc"
};
constexpr CaseRun upperRuns[] = {
#include "engine/text/case_upper.inc"
};

template <size_t count>
wchar_t mapCase(const CaseRun (&runs)[count], wchar_t character) {
  const auto c = static_cast<uint32_t>(character);
  const CaseRun* run = std::lower_bound(std::begin(runs), std::end(runs), c,
                                        [](const CaseRun& r, uint32_t v) { return r.last < v; });
  if (run == std::end(runs) || c < run->first || (c - run->first) % run->stride != 0) return character;
  return static_cast<wchar_t>(c + run->distance);
}

constexpr std::array<uint8_t, 128> asciiLower = [] {
  std::array<uint8_t, 128> table{};
  for (int i = 0; i < 128; ++i) table[i] = i >= 'A' && i <= 'Z' ? i + 32 : i;
  return table;
}();

int compareWide(std::string_view a, std::string_view b) {
  const std::wstring left = fromUtf8(a), right = fromUtf8(b);
  const size_t shared = std::min(left.size(), right.size());
  for (size_t i = 0; i < shared; ++i) {
    const auto l = static_cast<uint32_t>(foldCharacter(left[i]));
    const auto r = static_cast<uint32_t>(foldCharacter(right[i]));
    if (l != r) return l < r ? -1 : 1;
  }
  return left.size() == right.size() ? 0 : left.size() < right.size() ? -1 : 1;
}

}  // namespace

wchar_t lowerCharacter(wchar_t c) {
  if (static_cast<uint32_t>(c) < 128) return asciiLower[static_cast<size_t>(c)];
  return mapCase(lowerRuns, c);
}

wchar_t upperCharacter(wchar_t c) {
  if (static_cast<uint32_t>(c) < 128) return c >= L'a' && c <= L'z' ? c - 32 : c;
  return mapCase(upperRuns, c);
}

wchar_t foldCharacter(wchar_t c) {
  constexpr wchar_t dotlessI = 0x131;  // its capital is that of another letter
  if (static_cast<uint32_t>(c) < 128) return asciiLower[static_cast<size_t>(c)];
  return c == dotlessI ? c : lowerCharacter(upperCharacter(c));
}

int compareText(std::string_view a, std::string_view b) {
  const size_t shared = std::min(a.size(), b.size());
  for (size_t i = 0; i < shared; ++i) {
    const auto left = static_cast<uint8_t>(a[i]), right = static_cast<uint8_t>(b[i]);
    if ((left | right) & 0x80) return compareWide(a.substr(i), b.substr(i));
    if (left != right && asciiLower[left] != asciiLower[right]) {
      return asciiLower[left] < asciiLower[right] ? -1 : 1;
    }
  }
  return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

std::string foldText(std::string_view text) {
  std::wstring wide = fromUtf8(text);
  std::transform(wide.begin(), wide.end(), wide.begin(), foldCharacter);
  return toUtf8(wide);
}
