#include "engine/text/collation.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <utility>

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

/// What `text_order.inc` says of a character: where it stands among letters, signs and digits.
struct LetterPlaces {
  uint16_t character, first, second;
};
constexpr LetterPlaces letterPlaces[] = {
#include "engine/text/text_order.inc"
};

/// Behind all that the table has, by code point.
constexpr uint32_t unknownPlaces = 0x10000;

constexpr std::array<uint16_t, 128> asciiPlaces = [] {
  std::array<uint16_t, 128> table{};
  for (uint16_t c = 0; c < 32; ++c) table[c] = c + 1;  // signs that control come first
  table[127] = 33;
  for (const LetterPlaces& each : letterPlaces) {
    if (each.character < 128) table[each.character] = each.first;
  }
  for (int c = 'A'; c <= 'Z'; ++c) table[c] = table[c + 32];
  return table;
}();

/// Gives the places of a text's characters one after the other; 0 at the end.
class Places {
 public:
  explicit Places(const std::wstring& text) : text_(text) {}
  uint32_t next() {
    if (second_ != 0) return std::exchange(second_, 0);
    while (at_ < text_.size()) {
      const auto c = static_cast<uint32_t>(foldCharacter(text_[at_++]));
      if (c < 128) return asciiPlaces[c];
      const LetterPlaces* found =
          std::lower_bound(std::begin(letterPlaces), std::end(letterPlaces), c,
                           [](const LetterPlaces& p, uint32_t v) { return p.character < v; });
      if (found == std::end(letterPlaces) || found->character != c) return unknownPlaces + c;
      second_ = found->second;
      if (found->first != 0) return found->first;
    }
    return 0;
  }

 private:
  const std::wstring& text_;
  size_t at_ = 0;
  uint32_t second_ = 0;
};

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

int compareLanguage(std::string_view a, std::string_view b) {
  const size_t shared = std::min(a.size(), b.size());
  for (size_t i = 0; i < shared; ++i) {
    const auto left = static_cast<uint8_t>(a[i]), right = static_cast<uint8_t>(b[i]);
    if ((left | right) & 0x80) {
      const std::wstring restA = fromUtf8(a.substr(i)), restB = fromUtf8(b.substr(i));
      Places placesA(restA), placesB(restB);
      while (true) {
        const uint32_t l = placesA.next(), r = placesB.next();
        if (l != r) return l < r ? -1 : 1;
        if (l == 0) return compareWide(a.substr(i), b.substr(i));
      }
    }
    if (asciiPlaces[left] != asciiPlaces[right]) return asciiPlaces[left] < asciiPlaces[right] ? -1 : 1;
  }
  // What one has more, also an accent alone, puts it behind.
  return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

std::string foldText(std::string_view text) {
  std::wstring wide = fromUtf8(text);
  std::transform(wide.begin(), wide.end(), wide.begin(), foldCharacter);
  return toUtf8(wide);
}
