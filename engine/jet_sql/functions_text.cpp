#include <algorithm>

#include "engine/jet_sql/functions.h"
#include "engine/text/collation.h"
#include "platform/text/utf.h"

namespace jet {
namespace {

constexpr int64_t longestText = 64 << 20;  // what Space and String may make

[[noreturn]] void badArgument() { Call::fail(5, "Invalid procedure call: an argument is out of its range"); }

size_t lengthArgument(const Call& call, int i) {
  const int64_t value = call.whole(i);
  if (value < 0) badArgument();
  return static_cast<size_t>(value);
}

size_t startArgument(const Call& call, int i) {
  const int64_t value = call.whole(i);
  if (value < 1) badArgument();
  return static_cast<size_t>(value);
}

bool ignoresCase(const Call& call, int i) { return i >= call.count() || call.whole(i) != 0; }

std::wstring folded(std::wstring text, bool ignoreCase) {
  if (ignoreCase) std::transform(text.begin(), text.end(), text.begin(), lowerCharacter);
  return text;
}

void len(Call& call) {
  const std::string text = call.text(0);
  call.give(std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

void left(Call& call) { call.give(call.wide(0).substr(0, lengthArgument(call, 1))); }

void right(Call& call) {
  const std::wstring text = call.wide(0);
  const size_t length = std::min(lengthArgument(call, 1), text.size());
  call.give(text.substr(text.size() - length));
}

void mid(Call& call) {
  const std::wstring text = call.wide(0);
  const size_t start = startArgument(call, 1) - 1;
  const size_t length = call.count() > 2 ? lengthArgument(call, 2) : std::wstring::npos;
  call.give(start >= text.size() ? std::wstring() : text.substr(start, length));
}

// InStr([start,] text, part [, compare])
void inStr(Call& call) {
  const int first = call.count() > 2 ? 1 : 0;
  const size_t start = first ? startArgument(call, 0) - 1 : 0;
  const bool ignoreCase = ignoresCase(call, 3);
  const std::wstring text = folded(call.wide(first), ignoreCase),
                     part = folded(call.wide(first + 1), ignoreCase);
  if (text.empty() || start >= text.size()) return call.give(int64_t{0});
  const size_t found = text.find(part, start);
  call.give(found == std::wstring::npos ? int64_t{0} : static_cast<int64_t>(found) + 1);
}

// InStrRev(text, part [, start [, compare]])
void inStrRev(Call& call) {
  const bool ignoreCase = ignoresCase(call, 3);
  std::wstring text = folded(call.wide(0), ignoreCase);
  const std::wstring part = folded(call.wide(1), ignoreCase);
  if (call.count() > 2 && call.whole(2) != -1) text.resize(std::min(text.size(), startArgument(call, 2)));
  const size_t found = text.empty() ? std::wstring::npos : text.rfind(part);
  call.give(found == std::wstring::npos ? int64_t{0} : static_cast<int64_t>(found) + 1);
}

void mapText(Call& call, wchar_t (*map)(wchar_t)) {
  std::wstring text = call.wide(0);
  std::transform(text.begin(), text.end(), text.begin(), map);
  call.give(text);
}
void uCase(Call& call) { mapText(call, upperCharacter); }
void lCase(Call& call) { mapText(call, lowerCharacter); }

void trimmed(Call& call, bool atStart, bool atEnd) {
  const std::string text = call.text(0);
  std::string_view rest = text;
  while (atStart && rest.starts_with(' ')) rest.remove_prefix(1);
  while (atEnd && rest.ends_with(' ')) rest.remove_suffix(1);
  call.give(rest);
}
void trim(Call& call) { trimmed(call, true, true); }
void lTrim(Call& call) { trimmed(call, true, false); }
void rTrim(Call& call) { trimmed(call, false, true); }

// Replace(text, part, by [, start [, count [, compare]]])
void replace(Call& call) {
  const std::wstring text = call.wide(0), by = call.wide(2);
  const bool ignoreCase = ignoresCase(call, 5);
  const std::wstring search = folded(text, ignoreCase), part = folded(call.wide(1), ignoreCase);
  size_t at = call.count() > 3 ? startArgument(call, 3) - 1 : 0;
  int64_t left = call.count() > 4 ? call.whole(4) : -1;
  std::wstring result;
  while (!part.empty() && left-- != 0 && at < text.size()) {
    const size_t found = search.find(part, at);
    if (found == std::wstring::npos) break;
    result.append(text, at, found - at).append(by);
    if (result.size() > static_cast<size_t>(longestText))
      Call::fail(overflow, "Overflow: the text is too long");
    at = found + part.size();
  }
  if (at < text.size()) result.append(text, at);
  call.give(result);
}

size_t repeatCount(const Call& call) {
  const size_t count = lengthArgument(call, 0);
  if (count > static_cast<size_t>(longestText)) Call::fail(overflow, "Overflow: the text is too long");
  return count;
}
void space(Call& call) { call.give(std::string_view(std::string(repeatCount(call), ' '))); }

wchar_t characterOf(int64_t code) {
  if (code < 0 || code > 0x10FFFF || code == 0) badArgument();
  return static_cast<wchar_t>(code);
}

void string(Call& call) {
  const bool code = call.storage(1) != SQLITE_TEXT;
  const std::wstring text = code ? std::wstring(1, characterOf(call.whole(1) % 256)) : call.wide(1);
  if (text.empty()) badArgument();
  call.give(std::wstring(repeatCount(call), text[0]));
}

void strComp(Call& call) {
  const bool binary = call.count() > 2 && call.whole(2) == 0;
  const std::string a = call.text(0), b = call.text(1);
  const int order = binary ? a.compare(b) : compareText(a, b);
  call.give(int64_t{order < 0 ? -1 : order > 0 ? 1 : 0});
}

void asc(Call& call) {
  const std::wstring text = call.wide(0);
  if (text.empty()) badArgument();
  call.give(static_cast<int64_t>(text[0]));
}
void chr(Call& call) { call.give(std::wstring(1, characterOf(call.whole(0)))); }

void strReverse(Call& call) {
  std::wstring text = call.wide(0);
  std::reverse(text.begin(), text.end());
  call.give(text);
}

// 1 upper, 2 lower, 3 each word's first letter upper.
void strConv(Call& call) {
  std::wstring text = call.wide(0);
  const int64_t kind = call.whole(1);
  if (kind < 1 || kind > 3) badArgument();
  bool wordStart = true;
  for (wchar_t& c : text) {
    c = kind == 1 || (kind == 3 && wordStart) ? upperCharacter(c) : lowerCharacter(c);
    wordStart = c == L' ' || c == L'\t' || c == L'\n';
  }
  call.give(text);
}

constexpr FunctionRow rows[] = {
    {"LEN", "t", Type::Long, len},
    {"LEFT", "tn", Type::Text, left},
    {"RIGHT", "tn", Type::Text, right},
    {"MID", "tn|n", Type::Text, mid},
    {"INSTR", "tt|tn", Type::Long, inStr},
    {"INSTRREV", "tt|nn", Type::Long, inStrRev},
    {"UCASE", "t", Type::Text, uCase},
    {"LCASE", "t", Type::Text, lCase},
    {"TRIM", "t", Type::Text, trim},
    {"LTRIM", "t", Type::Text, lTrim},
    {"RTRIM", "t", Type::Text, rTrim},
    {"REPLACE", "ttt|nnn", Type::Text, replace},
    {"SPACE", "n", Type::Text, space},
    {"STRING", "nv", Type::Text, string},
    {"STRCOMP", "tt|n", Type::Long, strComp},
    {"ASC", "t", Type::Long, asc},
    {"ASCW", "t", Type::Long, asc},
    {"CHR", "n", Type::Text, chr},
    {"CHRW", "n", Type::Text, chr},
    {"STRREVERSE", "t", Type::Text, strReverse},
    {"STRCONV", "tn", Type::Text, strConv},
};

}  // namespace

std::span<const FunctionRow> textFunctions() { return rows; }

}  // namespace jet
