#include "host/solids/exchange_text.h"

#include <charconv>
#include <cstdio>

#include "platform/text/utf.h"

namespace host {

int ExchangeText::add(const std::string& body) {
  instances_ += '#' + std::to_string(++last_) + '=' + body + ";\n";
  return last_;
}

std::string ExchangeText::take(std::string_view schema, std::string_view description,
                               const std::string& name) const {
  return "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((" + std::string(description) + "),'2;1');\nFILE_NAME(" +
         quoted(name) + ",'1970-01-01T00:00:00',(''),(''),'Zarbo','Zarbo','');\nFILE_SCHEMA(('" +
         std::string(schema) + "'));\nENDSEC;\nDATA;\n" + instances_ + "ENDSEC;\nEND-ISO-10303-21;\n";
}

std::string quoted(std::string_view utf8) {
  std::string text = "'";
  bool wide = false;
  char digits[12];
  for (const wchar_t letter : fromUtf8(utf8)) {
    const auto code = static_cast<unsigned>(letter);
    const bool plain = code >= 0x20 && code < 0x7F;
    if (!plain && !wide) text += "\\X4\\";
    if (plain && wide) text += "\\X0\\";
    wide = !plain;
    if (!plain) {
      std::snprintf(digits, sizeof digits, "%08X", code);
      text += digits;
    } else {
      text += static_cast<char>(code);
      if (code == '\'' || code == '\\') text += static_cast<char>(code);
    }
  }
  return text + (wide ? "\\X0\\'" : "'");
}

std::string real(double value) {
  char digits[40];
  std::string text(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
  const size_t exponent = text.find('e');
  if (exponent != std::string::npos) text[exponent] = 'E';
  if (text.find('.') == std::string::npos)
    text.insert(exponent == std::string::npos ? text.size() : exponent, ".");
  return text;
}

std::string ref(int instance) { return '#' + std::to_string(instance); }

std::string refs(const std::vector<int>& instances) {
  std::string text = "(";
  for (const int each : instances) text += (text.size() > 1 ? ",#" : "#") + std::to_string(each);
  return text + ')';
}

std::string triple(double x, double y, double z) {
  return '(' + real(x) + ',' + real(y) + ',' + real(z) + ')';
}

}  // namespace host
