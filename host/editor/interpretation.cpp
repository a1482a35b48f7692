#include "host/editor/interpretation.h"

#include <cmath>
#include <limits>
#include <numbers>

#include "brx/editor_input.h"
#include "host/lisp/units.h"

namespace host {
namespace {

using Meaning = std::variant<Answer, Refusal, FirstPoint>;

constexpr double fullTurn = 2 * std::numbers::pi;
constexpr int smallestInteger = std::numeric_limits<int16_t>::min();
constexpr int largestInteger = std::numeric_limits<int16_t>::max();

Answer given() {
  Answer answer;
  answer.status = RTNORM;
  return answer;
}

Answer keywordAnswer(std::wstring keyword, int place = 0) {
  Answer answer;
  answer.integer = place;
  answer.status = RTKWORD;
  answer.text = std::move(keyword);
  return answer;
}

Answer pointAnswer(const AcGePoint3d& point) {
  Answer answer = given();
  answer.point = point;
  answer.pointGiven = true;
  return answer;
}

double wrapped(double angle) {
  const double turn = std::fmod(angle, fullTurn);
  return turn < 0 ? turn + fullTurn : turn;
}

std::wstring numberText(double value, bool whole) {
  if (whole) return std::to_wstring(static_cast<long long>(value));
  constexpr int mostDecimals = 8;
  lisp::ZeroRules zeros;
  zeros.dropTrailing = true;
  return lisp::lengthText(value, lisp::LengthUnits::decimal, mostDecimals, zeros);
}

class ItemReader {
 public:
  ItemReader(const Request& request, const CoordinateRules& rules) : request_(request), rules_(rules) {}

  Meaning operator()(const Cancel&) const {
    Answer answer;
    answer.status = RTCAN;
    return answer;
  }

  Meaning operator()(const Enter&) const {
    if (request_.wanted == Wanted::text || request_.wanted == Wanted::word) return given();
    if (has(RSG_NONULL)) {
      // Enter counts as an arbitrary text that is empty.
      if (has(RSG_OTHER)) return keywordAnswer(L"");
      return refusal();
    }
    Answer answer;
    answer.status = RTNONE;
    return answer;
  }

  Meaning operator()(const Moved& moved) const { return (*this)(moved.to); }

  Meaning operator()(const AcGePoint3d& point) const {
    if (!std::isfinite(point.x) || !std::isfinite(point.y) || !std::isfinite(point.z)) return refusal();
    switch (request_.wanted) {
      case Wanted::point:
      case Wanted::entity:
        return pointAnswer(point);
      case Wanted::distance:
        return request_.base ? checkedReal(distanceTo(point)) : Meaning(FirstPoint{point});
      case Wanted::angle:
      case Wanted::orientation:
        return request_.base ? angleTo(point) : Meaning(FirstPoint{point});
      default:
        return refusal();
    }
  }

  Meaning operator()(const Number& number) const {
    switch (request_.wanted) {
      case Wanted::distance:
      case Wanted::real:
        return checkedReal(number.value);
      case Wanted::angle:
      case Wanted::orientation:
        return number.typed ? typedAngle(numberText(number.value, number.whole)) : checkedReal(number.value);
      case Wanted::integer:
        return number.whole ? checkedInteger(number.value) : refusal();
      case Wanted::word:
      case Wanted::text: {
        Answer answer = given();
        answer.text = numberText(number.value, number.whole);
        return answer;
      }
      default:
        return (*this)(Typed{numberText(number.value, number.whole)});
    }
  }

  Meaning operator()(const Picked& picked) const {
    if (request_.wanted != Wanted::entity) {
      return picked.point ? (*this)(*picked.point) : refusal();
    }
    Answer answer = picked.point ? pointAnswer(*picked.point) : given();
    answer.entity = picked.entity;
    return answer;
  }

  Meaning operator()(const Entities& entities) const {
    if (request_.wanted != Wanted::entity || entities.size() != 1) return refusal();
    return (*this)(Picked{entities.front(), std::nullopt});
  }

  Meaning operator()(const Typed& typed) const {
    if (typed.text.find(L'\x1b') != std::wstring::npos) return (*this)(Cancel{});
    if (request_.wanted == Wanted::text || request_.wanted == Wanted::word) {
      Answer answer = given();
      answer.text = typed.text;
      return answer;
    }
    if (typed.text.empty()) return (*this)(Enter{});
    const KeywordList& keywords = request_.rules.keywords;
    if (const auto place = keywords.find(typed.text)) {
      return keywordAnswer(keywords.nameAt(*place), static_cast<int>(*place) + 1);
    }
    Meaning meaning = typedValue(typed.text);
    if (std::holds_alternative<Refusal>(meaning) && has(RSG_OTHER)) return keywordAnswer(typed.text);
    return meaning;
  }

 private:
  bool has(int bit) const { return (request_.rules.bits & bit) != 0; }

  Meaning typedValue(const std::wstring& text) const {
    switch (request_.wanted) {
      case Wanted::real: {
        const auto value = lisp::parseLength(text);
        return value ? checkedReal(*value) : refusal();
      }
      case Wanted::integer: {
        const auto value = lisp::parseLength(text);
        const bool whole = value && text.find_first_not_of(L"+-0123456789") == std::wstring::npos;
        return whole ? checkedInteger(*value) : refusal();
      }
      case Wanted::distance:
        if (const auto value = lisp::parseLength(text)) return checkedReal(*value);
        return typedPoint(text);
      case Wanted::angle:
      case Wanted::orientation:
        // "45<30" and "@" are points, and the surveyor's "N45dE" has no comma either.
        if (text.find_first_of(L"@,<") != std::wstring::npos) return typedPoint(text);
        return typedAngle(text);
      case Wanted::point:
      case Wanted::entity:
        return typedPoint(text);
      default:
        return refusal();
    }
  }

  Meaning typedPoint(const std::wstring& text) const {
    const auto point = parsePoint(text, rules_);
    return point ? (*this)(*point) : refusal();
  }

  Meaning typedAngle(const std::wstring& text) const {
    const auto value = lisp::parseAngle(text, rules_.angleUnits);
    if (!value) return refusal();
    const double turn = rules_.clockwise ? -*value : *value;
    return checkedReal(request_.wanted == Wanted::orientation ? wrapped(turn + rules_.angleBase) : turn);
  }

  double distanceTo(const AcGePoint3d& point) const {
    const AcGeVector3d way = point - *request_.base;
    return has(RSG_2D) ? way.convert2d().length() : way.length();
  }

  Meaning angleTo(const AcGePoint3d& point) const {
    const double direction = (point - *request_.base).convert2d().angle();
    return checkedReal(request_.wanted == Wanted::orientation ? direction
                                                              : wrapped(direction - rules_.angleBase));
  }

  bool refusesZero() const { return has(RSG_NOZERO); }
  bool refusesNegative() const {
    return has(RSG_NONEG) && request_.wanted != Wanted::angle && request_.wanted != Wanted::orientation;
  }
  std::optional<Refusal> rangeRefusal(double value) const {
    const bool zero = value == 0 && refusesZero(), negative = value < 0 && refusesNegative();
    if (!zero && !negative) return std::nullopt;
    if (refusesZero() && refusesNegative()) return Refusal{L"Value must be positive and nonzero."};
    return Refusal{zero ? L"Value must be nonzero." : L"Value must be positive."};
  }

  Meaning checkedReal(double value) const {
    if (!std::isfinite(value)) return refusal();
    if (auto refused = rangeRefusal(value)) return *refused;
    Answer answer = given();
    answer.real = value;
    return answer;
  }

  Meaning checkedInteger(double value) const {
    if (value < smallestInteger || value > largestInteger) {
      return Refusal{L"Requires an integer between " + std::to_wstring(smallestInteger) + L" and " +
                     std::to_wstring(largestInteger) + L"."};
    }
    if (auto refused = rangeRefusal(value)) return *refused;
    Answer answer = given();
    answer.integer = static_cast<int>(value);
    answer.real = value;
    return answer;
  }

  Meaning refusal() const {
    const bool keywords = !request_.rules.keywords.empty();
    const wchar_t* const orKeyword = keywords ? L" or option keyword." : L".";
    const std::wstring second = request_.base ? L"second point" : L"two points";
    switch (request_.wanted) {
      case Wanted::point:
        return Refusal{keywords ? L"Point or option keyword required." : L"Invalid point."};
      case Wanted::distance:
        return Refusal{L"Requires numeric distance" + twoWays(second, keywords)};
      case Wanted::angle:
      case Wanted::orientation:
        return Refusal{L"Requires valid numeric angle" + twoWays(second, keywords)};
      case Wanted::real:
        return Refusal{std::wstring(L"Requires numeric value") + orKeyword};
      case Wanted::integer:
        return Refusal{std::wstring(L"Requires an integer value") + orKeyword};
      case Wanted::keyword:
        return Refusal{L"Invalid option keyword."};
      default:
        return Refusal{L"Invalid selection."};
    }
  }

  static std::wstring twoWays(const std::wstring& second, bool keywords) {
    return keywords ? L", " + second + L", or option keyword." : L" or " + second + L".";
  }

  const Request& request_;
  const CoordinateRules& rules_;
};

}  // namespace

bool Answer::given() const { return status == RTNORM; }

Meaning interpret(const Request& request, const InputItem& item, const CoordinateRules& rules) {
  return std::visit(ItemReader(request, rules), item);
}

}  // namespace host
