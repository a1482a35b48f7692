#include "host/commands/colour_names.h"

#include "platform/text/letters.h"

namespace host {
namespace {

/// At most three digits.
std::optional<int> smallNumber(const std::wstring& text) {
  if (text.empty() || text.size() > 3 || text.find_first_not_of(L"0123456789") != std::wstring::npos)
    return {};
  return std::stoi(text);
}

std::optional<AcCmColor> indexed(int index) {
  AcCmColor colour;
  if (index > 256 || colour.setColorIndex(static_cast<Adesk::UInt16>(index)) != Acad::eOk) return {};
  return colour;
}

std::optional<AcCmColor> mixed(const std::wstring& text) {
  int parts[3] = {};
  size_t at = 0;
  for (int& part : parts) {
    const size_t comma = std::min(text.find(L',', at), text.size());
    const auto number = at <= text.size() ? smallNumber(text.substr(at, comma - at)) : std::nullopt;
    if (!number || *number > 255) return {};
    part = *number;
    at = comma + 1;
  }
  if (at <= text.size()) return {};
  AcCmColor colour;
  colour.setRGB(static_cast<Adesk::UInt8>(parts[0]), static_cast<Adesk::UInt8>(parts[1]),
                static_cast<Adesk::UInt8>(parts[2]));
  return colour;
}

}  // namespace

std::optional<AcCmColor> parseColour(const std::wstring& text) {
  static constexpr const wchar_t* names[] = {L"BYBLOCK", L"RED",  L"YELLOW",  L"GREEN",
                                             L"CYAN",    L"BLUE", L"MAGENTA", L"WHITE"};
  const std::wstring wanted = upperCased(text);
  for (int i = 0; i < 8; ++i) {
    if (wanted == names[i]) return indexed(i);
  }
  if (wanted == L"BYLAYER") return indexed(256);
  if (const auto index = smallNumber(wanted)) return indexed(*index);
  return mixed(wanted);
}

}  // namespace host
