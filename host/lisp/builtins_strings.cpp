#include <charconv>
#include <cmath>
#include <limits>

#include "host/lisp/builtins.h"
#include "host/lisp/reader.h"
#include "host/lisp/wildcard.h"
#include "platform/text/utf.h"

namespace lisp {
namespace {

Value textValue(std::wstring_view text) { return Value(text); }

/// A long text, which may be one that a program makes piece by piece, isn't copied.
Value strcat(const Call& call) {
  constexpr size_t longText = 256;
  const bool lengthens = call.count() > 1 && call.text(0).size() >= longText;
  std::wstring joined;
  for (size_t i = lengthens ? 1 : 0; i < call.count(); ++i) joined += call.text(i);
  return lengthens ? Value::lengthened(call[0], joined) : textValue(joined);
}

Value strlen(const Call& call) {
  size_t length = 0;
  for (size_t i = 0; i < call.count(); ++i) length += call.text(i).size();
  return static_cast<int32_t>(length);
}

// Places count from 1.
Value substr(const Call& call) {
  const std::wstring& text = call.text(0);
  const int32_t start = call.integer(1);
  if (start < 1) throw LispError(L"bad argument value: positive " + std::to_wstring(start));
  if (call.has(2) && call.integer(2) < 0) {
    throw LispError(L"bad argument value: non-negative " + std::to_wstring(call.integer(2)));
  }
  const size_t first = static_cast<size_t>(start) - 1;
  if (first >= text.size()) return textValue(L"");
  const size_t count = call.has(2) ? static_cast<size_t>(call.integer(2)) : std::wstring::npos;
  return textValue(std::wstring_view(text).substr(first, count));
}

Value strcase(const Call& call) {
  const bool lower = call.has(1) && call[1].isTrue();
  return textValue(lower ? lowerCased(call.text(0)) : upperCased(call.text(0)));
}

Value ascii(const Call& call) {
  const std::wstring& text = call.text(0);
  return text.empty() ? 0 : static_cast<int32_t>(text[0]);
}

Value chr(const Call& call) {
  const wchar_t c = characterOf(call[0]);
  return c == 0 ? textValue(L"") : textValue(std::wstring_view(&c, 1));
}

Value read(const Call& call) {
  if (!call.has(0)) return {};
  const std::string source = toUtf8(call.text(0));
  Reader reader(call.lisp, source);
  return reader.next().value_or(Value());
}

// What a number at the front of a text is; the rest is passed over.
double leadingNumber(const std::wstring& text) {
  const std::string bytes = toUtf8(text);
  size_t start = bytes.find_first_not_of(" \t\r\n");
  if (start == std::string::npos) return 0.0;
  if (bytes[start] == '+') ++start;
  double value = 0.0;
  const size_t digit = start < bytes.size() && bytes[start] == '-' ? start + 1 : start;
  if (digit >= bytes.size() || (bytes[digit] != '.' && (bytes[digit] < '0' || bytes[digit] > '9')))
    return 0.0;
  const auto result = std::from_chars(bytes.data() + start, bytes.data() + bytes.size(), value);
  return result.ec == std::errc() ? value : 0.0;
}

Value atoi(const Call& call) {
  const double value = std::trunc(leadingNumber(call.text(0)));
  if (value >= std::numeric_limits<int32_t>::max()) return std::numeric_limits<int32_t>::max();
  if (value <= std::numeric_limits<int32_t>::min()) return std::numeric_limits<int32_t>::min();
  return static_cast<int32_t>(value);
}

Value atof(const Call& call) { return leadingNumber(call.text(0)); }
Value itoa(const Call& call) { return textValue(std::to_wstring(call.integer(0))); }
Value wcmatch(const Call& call) { return call.lisp.truth(matchesWildcard(call.text(0), call.text(1))); }

}  // namespace

std::span<const Builtin> stringBuiltins() {
  static const Builtin table[] = {
      {L"STRCAT", strcat},         {L"STRLEN", strlen},         {L"SUBSTR", substr, 2, 3},
      {L"STRCASE", strcase, 1, 2}, {L"ASCII", ascii, 1, 1},     {L"CHR", chr, 1, 1},
      {L"READ", read, 0, 1},       {L"ATOI", atoi, 1, 1},       {L"ATOF", atof, 1, 1},
      {L"ITOA", itoa, 1, 1},       {L"WCMATCH", wcmatch, 2, 2},
  };
  return table;
}

}  // namespace lisp
