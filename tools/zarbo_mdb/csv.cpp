#include "tools/zarbo_mdb/csv.h"

#include <charconv>
#include <cstdio>

#include "engine/jet_sql/date.h"
#include "engine/jet_sql/functions.h"
#include "platform/text/hex.h"

namespace {

std::string dateField(double serial) {
  const auto parts = jet::partsOf(serial);
  if (!parts) return jet::numberText(serial);
  char text[40];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", parts->year, parts->month, parts->day,
                parts->hour, parts->minute, parts->second);
  return text;
}

// The fewest digits that give the number back.
template <class Real>
std::string exactText(Real value) {
  char text[40];
  const auto end = std::to_chars(text, text + sizeof text, value);
  return {text, end.ptr};
}

std::string hexDigits(const std::string& bytes) {
  std::string text;
  for (const char c : bytes) appendHex(text, static_cast<unsigned char>(c));
  return text;
}

}  // namespace

std::string csvText(const std::string& text) {
  if (!text.empty() && text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (const char c : text) {
    quoted += c;
    if (c == '"') quoted += c;
  }
  return quoted + "\"";
}

std::string csvField(const Stored& value, jet::Type type) {
  switch (value.kind) {
    case Stored::Kind::Null:
      return "";
    case Stored::Kind::Integer:
      if (type == jet::Type::YesNo) return value.integer ? "True" : "False";
      if (type == jet::Type::Currency) return jet::currencyText(value.integer);
      return std::to_string(value.integer);
    case Stored::Kind::Real:
      if (type == jet::Type::Date) return dateField(value.real);
      return type == jet::Type::Single ? exactText(static_cast<float>(value.real)) : exactText(value.real);
    case Stored::Kind::Blob:
      return hexDigits(value.bytes);
    case Stored::Kind::Text:
      break;
  }
  return csvText(value.bytes);
}
