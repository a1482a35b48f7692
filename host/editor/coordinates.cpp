#include "host/editor/coordinates.h"

#include <cmath>

#include "host/documents/variables.h"
#include "platform/text/trim.h"

namespace host {
namespace {

template <class T>
T variableOr(std::wstring_view name, T otherwise) {
  const auto value = getVariable(name);
  const T* const found = value ? std::get_if<T>(&*value) : nullptr;
  return found ? *found : otherwise;
}

std::optional<double> number(std::wstring_view text) {
  const auto value = lisp::parseLength(std::wstring(trimmed(text)));
  return value && std::isfinite(*value) ? value : std::nullopt;
}

/// Up to three numbers between commas.
struct Numbers {
  double at[3] = {};
  int count = 0;
};

std::optional<Numbers> numbers(std::wstring_view text) {
  Numbers made;
  while (made.count < 3) {
    const size_t comma = text.find(L',');
    const auto value = number(text.substr(0, comma));
    if (!value) return std::nullopt;
    made.at[made.count++] = *value;
    if (comma == std::wstring_view::npos) return made;
    text.remove_prefix(comma + 1);
  }
  return std::nullopt;
}

std::optional<double> angle(std::wstring_view text, const CoordinateRules& rules) {
  const auto value = lisp::parseAngle(std::wstring(trimmed(text)), rules.angleUnits);
  return value && std::isfinite(*value) ? value : std::nullopt;
}

/// An offset that begins with a distance and an angle in the plane; `flat` when it tells no height.
std::optional<AcGeVector3d> polarOffset(std::wstring_view text, const CoordinateRules& rules, bool& flat) {
  const size_t mark = text.find(L'<');
  const auto distance = number(text.substr(0, mark));
  std::wstring_view rest = text.substr(mark + 1);
  const size_t next = rest.find_first_of(L"<,");
  const auto turn = angle(rest.substr(0, next), rules);
  if (!distance || !turn) return std::nullopt;
  const double direction = rules.direction(*turn);
  AcGeVector3d offset{*distance * std::cos(direction), *distance * std::sin(direction), 0};
  flat = next == std::wstring_view::npos;
  if (flat) return offset;
  const bool spherical = rest[next] == L'<';
  rest.remove_prefix(next + 1);
  if (spherical) {
    const auto rise = angle(rest, rules);
    if (!rise) return std::nullopt;
    offset = offset * std::cos(*rise);
    offset.z = *distance * std::sin(*rise);
    return offset;
  }
  const auto height = number(rest);
  if (!height) return std::nullopt;
  offset.z = *height;
  return offset;
}

}  // namespace

CoordinateRules CoordinateRules::current() {
  CoordinateRules rules;
  const Point last = variableOr(L"LASTPOINT", Point{});
  rules.last = {last.x, last.y, last.z};
  rules.elevation = variableOr(L"ELEVATION", 0.0);
  rules.angleUnits = static_cast<lisp::AngleUnits>(variableOr(L"AUNITS", 0));
  rules.angleBase = variableOr(L"ANGBASE", 0.0);
  rules.clockwise = variableOr(L"ANGDIR", 0) != 0;
  return rules;
}

std::optional<AcGePoint3d> parsePoint(std::wstring_view text, const CoordinateRules& rules) {
  text = trimmed(text);
  const bool relative = text.starts_with(L'@');
  if (relative) text = trimmed(text.substr(1));
  if (text.starts_with(L'*')) text.remove_prefix(1);
  if (text.empty()) return relative ? std::optional(rules.last) : std::nullopt;
  AcGeVector3d offset;
  bool flat = false;
  if (text.find(L'<') != std::wstring_view::npos) {
    const auto polar = polarOffset(text, rules, flat);
    if (!polar) return std::nullopt;
    offset = *polar;
  } else {
    const auto found = numbers(text);
    if (!found || found->count < 2) return std::nullopt;
    offset = {found->at[0], found->at[1], found->at[2]};
    flat = found->count == 2;
  }
  if (relative) return rules.last + offset;
  return AcGePoint3d{offset.x, offset.y, flat ? rules.elevation : offset.z};
}

}  // namespace host
