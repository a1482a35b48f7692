#include "engine/mdb/jet_values.h"

#include <cmath>

#include "platform/text/hex.h"

namespace mdb {
namespace {

constexpr uint32_t replacement = 0xFFFD;

void addUtf8(std::string& text, uint32_t c) {
  if (c < 0x80) {
    text += static_cast<char>(c);
  } else if (c < 0x800) {
    text += {static_cast<char>(0xC0 | c >> 6), static_cast<char>(0x80 | (c & 0x3F))};
  } else if (c < 0x10000) {
    text += {static_cast<char>(0xE0 | c >> 12), static_cast<char>(0x80 | (c >> 6 & 0x3F)),
             static_cast<char>(0x80 | (c & 0x3F))};
  } else {
    text += {static_cast<char>(0xF0 | c >> 18), static_cast<char>(0x80 | (c >> 12 & 0x3F)),
             static_cast<char>(0x80 | (c >> 6 & 0x3F)), static_cast<char>(0x80 | (c & 0x3F))};
  }
}

/// Joins the two halves of characters beyond U+FFFF.
class Utf16Reader {
 public:
  explicit Utf16Reader(size_t units) { text_.reserve(units); }
  void add(uint32_t unit) {
    const bool low = unit >= 0xDC00 && unit < 0xE000;
    if (high_ && low) {
      addUtf8(text_, 0x10000 + ((high_ - 0xD800) << 10) + (unit - 0xDC00));
      high_ = 0;
      return;
    }
    if (high_) addUtf8(text_, replacement);
    high_ = unit >= 0xD800 && unit < 0xDC00 ? unit : 0;
    if (!high_) addUtf8(text_, low ? replacement : unit);
  }
  std::string take() {
    if (high_) addUtf8(text_, replacement);
    return std::move(text_);
  }

 private:
  std::string text_;
  uint32_t high_ = 0;
};

// After the mark, characters below U+0100 stand as one byte; a zero byte switches to two bytes and back.
std::string decompressed(ByteView bytes) {
  Utf16Reader text(bytes.size());
  bool oneByte = true;
  for (size_t i = 0; i < bytes.size();) {
    if (bytes[i] == 0) {
      oneByte = !oneByte;
      ++i;
    } else if (oneByte) {
      text.add(bytes[i++]);
    } else {
      if (i + 1 == bytes.size()) break;
      text.add(static_cast<uint32_t>(bytes[i] | bytes[i + 1] << 8));
      i += 2;
    }
  }
  return text.take();
}

using Wide = unsigned __int128;

// Four groups of four bytes, the highest group first.
Wide magnitude(ByteView bytes) {
  Wide value = 0;
  for (size_t group = 0; group < 4; ++group) value = value << 32 | numberAt<uint32_t>(bytes, 1 + 4 * group);
  return value;
}

bool isNegative(ByteView bytes) { return numberAt<uint8_t>(bytes, 0) & 0x80; }

constexpr int mostScale = 28;

Wide powerOfTen(int exponent) {
  Wide power = 1;
  for (int i = 0; i < exponent; ++i) power *= 10;
  return power;
}

}  // namespace

std::string textOfJet4(ByteView bytes) {
  if (bytes.size() >= 2 && bytes[0] == 0xFF && bytes[1] == 0xFE) return decompressed(bytes.subspan(2));
  Utf16Reader text(bytes.size() / 2);
  for (size_t i = 0; i + 1 < bytes.size(); i += 2)
    text.add(static_cast<uint32_t>(bytes[i] | bytes[i + 1] << 8));
  return text.take();
}

std::string guidText(ByteView bytes) {
  if (bytes.size() != 16) throw JetError("an identifier has not 16 bytes");
  constexpr size_t order[] = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
  std::string text = "{";
  for (size_t i = 0; i < 16; ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
    appendHex(text, bytes[order[i]]);
  }
  return text + "}";
}

int64_t decimalAsCurrency(ByteView bytes, int scale) {
  if (scale < 0 || scale > 4) throw JetError("a decimal has too many places for an amount");
  const Wide value = magnitude(bytes), factor = powerOfTen(4 - scale);
  if (value > static_cast<Wide>(INT64_MAX) / factor) throw JetError("a decimal is too large for an amount");
  const auto scaled = static_cast<int64_t>(value * factor);
  return isNegative(bytes) ? -scaled : scaled;
}

double decimalAsDouble(ByteView bytes, int scale, bool& exact) {
  if (scale < 0 || scale > mostScale) throw JetError("a decimal has an impossible scale");
  const Wide value = magnitude(bytes);
  // Up to 15 digits, a double gives back the digits that it was made of.
  if (value >= powerOfTen(15)) exact = false;
  const auto number =
      static_cast<double>(static_cast<long double>(value) / static_cast<long double>(powerOfTen(scale)));
  return isNegative(bytes) ? -number : number;
}

Stored fixedValue(jet::Type type, ByteView bytes) {
  const auto require = [&](size_t size) {
    if (bytes.size() != size) throw JetError("a value has the wrong size");
  };
  const auto real = [](double value) { return std::isfinite(value) ? Stored::of(value) : Stored(); };
  switch (type) {
    case jet::Type::Byte:
      require(1);
      return Stored::of(int64_t{bytes[0]});
    case jet::Type::Integer:
      require(2);
      return Stored::of(int64_t{numberAt<int16_t>(bytes, 0)});
    case jet::Type::Long:
      require(4);
      return Stored::of(int64_t{numberAt<int32_t>(bytes, 0)});
    case jet::Type::Currency:
      require(8);
      return Stored::of(numberAt<int64_t>(bytes, 0));
    case jet::Type::Single:
      require(4);
      return real(static_cast<double>(numberAt<float>(bytes, 0)));
    case jet::Type::Double:
    case jet::Type::Date:
      require(8);
      return real(numberAt<double>(bytes, 0));
    case jet::Type::Guid:
      return Stored::of(guidText(bytes));
    default:
      throw JetError("a value has an unknown type");
  }
}

}  // namespace mdb
