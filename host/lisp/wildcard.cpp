#include "host/lisp/wildcard.h"

#include "platform/text/letters.h"

namespace lisp {
namespace {

bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

// What has two cases is a letter; of the rest, all that lies beyond ASCII and punctuation.
bool isLetter(wchar_t c) { return upperLetter(c) != lowerLetter(c) || c >= 0x2C00; }

/// One element of a pattern at `at`: whether it takes `c`, and where the next begins.
struct Element {
  bool matches;
  size_t next;
};

Element matchSet(std::wstring_view pattern, size_t at, wchar_t c) {
  bool found = false;
  const bool negated = at < pattern.size() && pattern[at] == L'~';
  if (negated) ++at;
  const size_t first = at;
  while (at < pattern.size() && (pattern[at] != L']' || at == first)) {
    if (pattern[at] == L'`' && at + 1 < pattern.size()) ++at;
    const wchar_t low = pattern[at];
    if (at + 2 < pattern.size() && pattern[at + 1] == L'-' && pattern[at + 2] != L']') {
      found = found || (c >= low && c <= pattern[at + 2]);
      at += 3;
    } else {
      found = found || c == low;
      ++at;
    }
  }
  return {found != negated, at + 1};
}

Element matchOne(std::wstring_view pattern, size_t at, wchar_t c) {
  switch (pattern[at]) {
    case L'#':
      return {isDigit(c), at + 1};
    case L'@':
      return {isLetter(c), at + 1};
    case L'.':
      return {!isLetter(c) && !isDigit(c), at + 1};
    case L'?':
      return {true, at + 1};
    case L'[':
      return matchSet(pattern, at + 1, c);
    case L'`':
      if (at + 1 < pattern.size()) return {c == pattern[at + 1], at + 2};
      return {c == L'`', at + 1};
    default:
      return {c == pattern[at], at + 1};
  }
}

// A mismatch goes back to the last `*` alone, so that the work is bounded by text times pattern.
bool matchesOne(std::wstring_view text, std::wstring_view pattern) {
  constexpr size_t none = std::wstring_view::npos;
  size_t at = 0, in = 0, star = none, resume = 0;
  while (at < text.size()) {
    if (in < pattern.size() && pattern[in] == L'*') {
      star = ++in;
      resume = at;
      continue;
    }
    if (in < pattern.size()) {
      const Element element = matchOne(pattern, in, text[at]);
      if (element.matches) {
        in = element.next;
        ++at;
        continue;
      }
    }
    if (star == none) return false;
    in = star;
    at = ++resume;
  }
  while (in < pattern.size() && pattern[in] == L'*') ++in;
  return in >= pattern.size();
}

size_t alternativeEnd(std::wstring_view pattern) {
  bool inSet = false;
  for (size_t i = 0; i < pattern.size(); ++i) {
    if (pattern[i] == L'`') {
      ++i;
    } else if (inSet) {
      inSet = pattern[i] != L']';
    } else if (pattern[i] == L'[') {
      inSet = true;
    } else if (pattern[i] == L',') {
      return i;
    }
  }
  return pattern.size();
}

}  // namespace

bool matchesWildcard(std::wstring_view text, std::wstring_view pattern) {
  for (;;) {
    const size_t end = alternativeEnd(pattern);
    std::wstring_view one = pattern.substr(0, end);
    const bool negated = !one.empty() && one[0] == L'~';
    if (negated) one.remove_prefix(1);
    if (matchesOne(text, one) != negated) return true;
    if (end == pattern.size()) return false;
    pattern.remove_prefix(end + 1);
  }
}

}  // namespace lisp
