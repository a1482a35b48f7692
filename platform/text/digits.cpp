#include "platform/text/digits.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

namespace {

__extension__ using Wide = unsigned __int128;

constexpr int mantissaBits = 53;

Wide powerOfTen(int exponent) {
  Wide power = 1;
  while (exponent-- > 0) power *= 10;
  return power;
}

std::string decimal(Wide value) {
  char text[40];
  char* first = std::end(text);
  for (; value > UINT64_MAX; value /= 10) *--first = static_cast<char>('0' + static_cast<int>(value % 10));
  for (auto rest = static_cast<uint64_t>(value); rest != 0; rest /= 10)
    *--first = static_cast<char>('0' + rest % 10);
  return {first, std::end(text)};
}

// mantissa × 2^exponent, exponent ≥ 0, by limbs of nine decimal digits, lowest first.
std::string decimalOfShifted(uint64_t mantissa, int exponent) {
  constexpr uint64_t limit = 1'000'000'000;
  std::vector<uint32_t> limbs;
  for (; mantissa != 0; mantissa /= limit) limbs.push_back(static_cast<uint32_t>(mantissa % limit));
  while (exponent > 0) {
    const int step = std::min(exponent, 32);
    uint64_t carry = 0;
    for (uint32_t& limb : limbs) {
      const uint64_t product = (uint64_t{limb} << step) + carry;
      limb = static_cast<uint32_t>(product % limit);
      carry = product / limit;
    }
    for (; carry != 0; carry /= limit) limbs.push_back(static_cast<uint32_t>(carry % limit));
    exponent -= step;
  }
  std::string text = std::to_string(limbs.back());
  for (size_t i = limbs.size() - 1; i-- > 0;) {
    const std::string part = std::to_string(limbs[i]);
    text.append(9 - part.size(), '0').append(part);
  }
  return text;
}

// mantissa × 10^places ÷ 2^shift, rounded half up; the product has at most 53 + 67 bits.
Wide scaledAndRounded(uint64_t mantissa, int places, int shift) {
  const Wide product = Wide{mantissa} * powerOfTen(places);
  if (shift > 121) return 0;
  return (product + (Wide{1} << (shift - 1))) >> shift;
}

bool isBlank(wchar_t c) { return c == L' ' || (c >= L'\t' && c <= L'\r'); }
bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

/// Walks a text and gathers what a number is made of.
class NumberReader {
 public:
  explicit NumberReader(std::wstring_view text) : text_(text) {}

  double read() {
    while (isBlank(peek())) ++at_;
    const bool negative = takeSign();
    const bool whole = takeDigits();
    bool fraction = false;
    if (peek() == L'.') {
      number_ += '.';
      ++at_;
      fraction = takeDigits();
    }
    if (!whole && !fraction) return 0;
    takeExponent();
    const double value = convert();
    return negative ? -value : value;
  }

 private:
  wchar_t peek() const { return at_ < text_.size() ? text_[at_] : L'\0'; }

  bool takeSign() {
    if (peek() != L'-' && peek() != L'+') return false;
    return text_[at_++] == L'-';
  }

  bool takeDigits() {
    const size_t start = at_;
    for (; isDigit(peek()); ++at_) number_ += static_cast<char>(peek());
    return at_ != start;
  }

  // An exponent counts only with at least one digit.
  void takeExponent() {
    const wchar_t mark = peek();
    if (mark != L'e' && mark != L'E' && mark != L'd' && mark != L'D') return;
    ++at_;
    const bool negative = takeSign();
    long exponent = 0;
    if (!isDigit(peek())) return;
    for (; isDigit(peek()); ++at_) exponent = std::min(exponent * 10 + (peek() - L'0'), 100'000'000L);
    exponent_ = negative ? -exponent : exponent;
  }

  double convert() {
    const size_t firstDigit = number_.find_first_of("123456789");
    if (firstDigit == std::string::npos) return 0;
    const std::string text = number_ + 'e' + std::to_string(exponent_);
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc::result_out_of_range) return value;
    const size_t point = std::min(number_.find('.'), number_.size());
    const long magnitude = static_cast<long>(point) - static_cast<long>(firstDigit) + exponent_;
    return magnitude > 0 ? std::numeric_limits<double>::infinity() : 0.0;
  }

  std::wstring_view text_;
  size_t at_ = 0;
  std::string number_;
  long exponent_ = 0;
};

}  // namespace

FixedDigits fixedDigits(double value, int places) {
  places = std::clamp(places, 0, mostPlaces);
  const bool negative = std::signbit(value) && value != 0;
  if (!std::isfinite(value)) return {std::isnan(value) ? "nan" : "inf", 3, negative && !std::isnan(value)};
  if (value == 0) return {std::string(static_cast<size_t>(places), '0'), 0, false};

  int exponent;
  const double fraction = std::frexp(std::fabs(value), &exponent);
  const auto mantissa = static_cast<uint64_t>(std::ldexp(fraction, mantissaBits));
  exponent -= mantissaBits;

  FixedDigits result;
  result.negative = negative;
  if (exponent >= 0) {
    result.digits = decimalOfShifted(mantissa, exponent);
    result.point = static_cast<int>(result.digits.size());
    result.digits.append(static_cast<size_t>(places), '0');
    return result;
  }
  const Wide rounded = scaledAndRounded(mantissa, places, -exponent);
  result.digits = decimal(rounded);
  if (rounded != 0) {
    result.point = static_cast<int>(result.digits.size()) - places;
  } else {
    const int shift = -exponent;
    const Wide oneFurther = shift > 127 ? 0 : Wide{mantissa} * powerOfTen(places + 1) >> shift;
    result.point = oneFurther != 0 ? -places : -places - 1;
  }
  return result;
}

double readReal(std::wstring_view text) { return NumberReader(text).read(); }

int32_t readInteger(std::wstring_view text) {
  size_t at = 0;
  while (at < text.size() && isBlank(text[at])) ++at;
  const bool negative = at < text.size() && text[at] == L'-';
  if (negative || (at < text.size() && text[at] == L'+')) ++at;
  int64_t value = 0;
  for (; at < text.size() && isDigit(text[at]); ++at)
    value = std::min(value * 10 + (text[at] - L'0'), int64_t{1} << 31);
  return truncated(static_cast<double>(negative ? -value : value));
}

int32_t truncated(double value) {
  if (std::isnan(value)) return 0;
  return static_cast<int32_t>(std::clamp<double>(value, INT32_MIN, INT32_MAX));
}
