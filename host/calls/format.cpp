#include "host/calls/format.h"

#include <algorithm>
#include <cstdio>
#include <string_view>
#include <vector>

#include "platform/text/utf.h"

namespace host {
namespace {

/// Wider fields and longer fractions than these help nobody, and bound the memory that a mark takes.
constexpr int maximumWidth = 1000;
constexpr int maximumPrecision = 100;

struct Mark {
  std::string flags;
  int width = -1;
  int precision = -1;
  wchar_t conversion = 0;
};

class Formatter {
 public:
  Formatter(const ACHAR* format, const AcutPrintValue* values, size_t count)
      : at_(format), values_(values), left_(count) {}

  std::wstring run() {
    while (*at_) {
      if (*at_ != L'%') {
        out_ += *at_++;
      } else if (at_[1] == L'%') {
        out_ += L'%';
        at_ += 2;
      } else {
        ++at_;
        write(readMark());
      }
    }
    return std::move(out_);
  }

 private:
  Mark readMark() {
    Mark mark;
    while (*at_ && std::wstring_view(L"-+ #0").find(*at_) != std::wstring_view::npos) {
      mark.flags += static_cast<char>(*at_++);
    }
    mark.width = readCount(maximumWidth);
    if (mark.width < -1) {  // a negative `*`: left-adjusted
      mark.flags += '-';
      mark.width = std::min(-mark.width, maximumWidth);
    }
    if (*at_ == L'.') {
      ++at_;
      mark.precision = std::max(readCount(maximumPrecision), 0);
    }
    while (*at_ && std::wstring_view(L"hljztLqwI").find(*at_) != std::wstring_view::npos) ++at_;
    if (*at_) mark.conversion = *at_++;
    return mark;
  }

  /// Digits or `*`; -1 when neither stands here.
  int readCount(int most) {
    if (*at_ == L'*') {
      ++at_;
      const AcutPrintValue* const value = next();
      if (!value || value->kind != AcutPrintValue::Kind::integer) return -1;
      return static_cast<int>(std::clamp<int64_t>(value->integer, -most, most));
    }
    if (*at_ < L'0' || *at_ > L'9') return -1;
    int count = 0;
    while (*at_ >= L'0' && *at_ <= L'9') count = std::min(count * 10 + static_cast<int>(*at_++ - L'0'), most);
    return count;
  }

  const AcutPrintValue* next() {
    if (left_ == 0) return nullptr;
    --left_;
    return values_++;
  }

  void write(const Mark& mark) {
    if (!mark.conversion) return;
    const AcutPrintValue* const value = next();
    if (!value) return;
    using Kind = AcutPrintValue::Kind;
    switch (mark.conversion) {
      case L'd':
      case L'i':
      case L'u':
      case L'x':
      case L'X':
      case L'o':
        if (value->kind == Kind::integer || value->kind == Kind::unsignedInteger) writeInteger(mark, *value);
        break;
      case L'e':
      case L'E':
      case L'f':
      case L'F':
      case L'g':
      case L'G':
        if (value->kind == Kind::real) writeReal(mark, value->real);
        break;
      case L'c':
      case L'C':
        writeCharacter(mark, *value);
        break;
      case L's':
      case L'S':
        if (value->kind == Kind::text && value->text) writeText(mark, value->text);
        if (value->kind == Kind::narrowText && value->narrowText)
          writeText(mark, fromUtf8(value->narrowText));
        break;
      default:
        break;
    }
  }

  static std::string pattern(const Mark& mark, const char* tail) {
    std::string made = "%" + mark.flags;
    if (mark.width >= 0) made += std::to_string(mark.width);
    if (mark.precision >= 0) made += "." + std::to_string(mark.precision);
    return made + tail;
  }

  template <class Value>
  void print(const std::string& pattern, Value value) {
    const int length = std::snprintf(nullptr, 0, pattern.c_str(), value);
    if (length < 0) return;
    std::string text(static_cast<size_t>(length) + 1, '\0');
    std::snprintf(text.data(), text.size(), pattern.c_str(), value);
    text.pop_back();
    out_ += fromUtf8(text);
  }

  void writeInteger(const Mark& mark, const AcutPrintValue& value) {
    const char tail[] = {'l', 'l', static_cast<char>(mark.conversion), 0};
    const bool asSigned = mark.conversion == L'd' || mark.conversion == L'i';
    uint64_t bits = value.unsignedInteger;
    if (!asSigned && value.size < 8) bits &= (uint64_t{1} << value.size * 8) - 1;
    print(pattern(mark, tail), static_cast<long long>(bits));
  }

  void writeReal(const Mark& mark, double value) {
    const char tail[] = {static_cast<char>(mark.conversion), 0};
    print(pattern(mark, tail), value);
  }

  void writeCharacter(const Mark& mark, const AcutPrintValue& value) {
    using Kind = AcutPrintValue::Kind;
    if (value.kind != Kind::character && value.kind != Kind::integer) return;
    const auto character = static_cast<wchar_t>(value.integer);
    if (character) pad(mark, std::wstring(1, character));
  }

  void writeText(const Mark& mark, std::wstring_view text) {
    pad(mark, mark.precision < 0 ? text : text.substr(0, static_cast<size_t>(mark.precision)));
  }

  void pad(const Mark& mark, std::wstring_view text) {
    const size_t width = mark.width < 0 ? 0 : static_cast<size_t>(mark.width);
    const std::wstring blanks(width > text.size() ? width - text.size() : 0, L' ');
    const bool left = mark.flags.find('-') != std::string::npos;
    if (!left) out_ += blanks;
    out_ += text;
    if (left) out_ += blanks;
  }

  const ACHAR* at_;
  const AcutPrintValue* values_;
  size_t left_;
  std::wstring out_;
};

}  // namespace

std::wstring formatValues(const ACHAR* format, const AcutPrintValue* values, size_t count) {
  if (!format) return {};
  return Formatter(format, values, count).run();
}

}  // namespace host
