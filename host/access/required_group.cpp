#include "host/access/required_group.h"

#include <algorithm>
#include <cmath>

#include "brx/db_block.h"
#include "brx/db_proxy.h"
#include "brx/lisp_calls.h"
#include "host/access/filter.h"
#include "host/access/object_list.h"
#include "host/database/group_codes.h"
#include "host/database/spaces.h"
#include "host/database/stubs.h"
#include "host/lisp/wildcard.h"
#include "platform/text/letters.h"

namespace host {
namespace {

using lisp::Value;

// What ERRNO tells of a filter.
enum : int { badOperator = 58, badCode = 63, badText = 64, badPoint = 65, badReal = 66, badInteger = 67 };

bool holdsName(int code) {
  return code == 0 || code == 2 || code == 3 || code == 5 || code == 6 || code == 7 || code == 8 ||
         code == 410;
}

/// Coordinates come and go through texts and transformations.
constexpr double fuzz = 1e-10;
bool nearlyEqual(double a, double b) {
  return std::abs(a - b) <= fuzz * std::max({1.0, std::abs(a), std::abs(b)});
}

std::wstring recordName(AcDbObjectId id) {
  const auto* const record = id.isNull() ? nullptr : AcDbSymbolTableRecord::cast(id.stub()->object);
  return record ? record->getName() : std::wstring();
}

}  // namespace

const Value& Candidate::list() {
  if (!list_) list_ = objectList(entity);
  return *list_;
}

std::optional<RequiredGroup::Relation> RequiredGroup::relationNamed(std::wstring_view name) {
  struct Named {
    std::wstring_view name;
    Relation relation;
  };
  static constexpr Named all[] = {
      {L"*", Relation::any},        {L"=", Relation::equal},    {L"!=", Relation::unequal},
      {L"/=", Relation::unequal},   {L"<>", Relation::unequal}, {L"<", Relation::less},
      {L"<=", Relation::lessEqual}, {L">", Relation::greater},  {L">=", Relation::greaterEqual},
      {L"&", Relation::someBits},   {L"&=", Relation::allBits},
  };
  for (const Named& each : all) {
    if (each.name == name) return each.relation;
  }
  return std::nullopt;
}

RequiredGroup::RequiredGroup(int code, const Value& value, std::wstring_view operators) : code_(code) {
  takeRelations(operators);
  takeValue(value);
}

void RequiredGroup::takeRelations(std::wstring_view operators) {
  while (!operators.empty()) {
    const size_t comma = std::min(operators.find(L','), operators.size());
    const auto relation = relationNamed(operators.substr(0, comma));
    if (!relation || relations_.size() == 3) throw FilterError(badOperator);
    relations_.push_back(*relation);
    operators.remove_prefix(std::min(comma + 1, operators.size()));
  }
  if (relations_.empty()) relations_.assign(3, Relation::equal);
}

void RequiredGroup::takeValue(const Value& value) {
  const auto need = [](bool suits, int number) {
    if (!suits) throw FilterError(number);
  };
  if (code_ == -3) return takeApplications(value);
  need(code_ >= 0 && code_ < 1000, badCode);
  switch (groupKind(code_)) {
    case GroupKind::text:
      need(value.isText(), badText);
      pattern_ = holdsName(code_) ? upperCased(value.text()) : value.text();
      break;
    case GroupKind::point:
      takePoint(value);
      break;
    case GroupKind::real:
      need(value.isNumber(), badReal);
      numbers_ = {value.number()};
      break;
    case GroupKind::handle:
      need(value.type() == lisp::Type::entity, badCode);
      name_ = value.entityName();
      break;
    case GroupKind::binary:
      throw FilterError(badCode);
    default:
      need(value.isInteger(), badInteger);
      numbers_ = {static_cast<double>(value.integer())};
  }
  const bool onBits =
      std::any_of(relations_.begin(), relations_.end(), [](Relation r) { return r >= Relation::someBits; });
  const bool isInteger = groupKind(code_) == GroupKind::int16 || groupKind(code_) == GroupKind::int32;
  need(!onBits || isInteger, badOperator);
}

void RequiredGroup::takePoint(const Value& value) {
  for (const Value& each : lisp::Elements(value)) {
    if (!each.isNumber() || numbers_.size() == 3) throw FilterError(badPoint);
    numbers_.push_back(each.number());
  }
  if (numbers_.size() < 2) throw FilterError(badPoint);
}

void RequiredGroup::takeApplications(const Value& value) {
  for (const Value& each : lisp::Elements(value)) {
    const Value& name = each.isCons() ? lisp::car(each) : each;
    if (!name.isText()) throw FilterError(badText);
    applications_.push_back(upperCased(name.text()));
  }
  if (applications_.empty()) throw FilterError(badText);
}

bool RequiredGroup::matchesText(std::wstring_view text) const {
  if (relations_[0] == Relation::any) return true;
  const bool fits = holdsName(code_) ? lisp::matchesWildcard(upperCased(std::wstring(text)), pattern_)
                                     : lisp::matchesWildcard(text, pattern_);
  return fits != (relations_[0] == Relation::unequal);
}

bool RequiredGroup::matchesNumber(double number, size_t place) const {
  // Tests that are left out let any coordinate through.
  const Relation relation = place < relations_.size() ? relations_[place] : Relation::any;
  const double wanted = numbers_[place];
  const auto bits = [](double value) { return static_cast<int64_t>(value); };
  switch (relation) {
    case Relation::any:
      return true;
    case Relation::equal:
      return nearlyEqual(number, wanted);
    case Relation::unequal:
      return !nearlyEqual(number, wanted);
    case Relation::less:
      return number < wanted;
    case Relation::lessEqual:
      return number <= wanted;
    case Relation::greater:
      return number > wanted;
    case Relation::greaterEqual:
      return number >= wanted;
    case Relation::someBits:
      return (bits(number) & bits(wanted)) != 0;
    case Relation::allBits:
      return (bits(number) & bits(wanted)) == bits(wanted);
  }
  return false;
}

bool RequiredGroup::matchesPoint(const Value& point) const {
  size_t place = 0;
  for (const Value& each : lisp::Elements(point)) {
    if (place == numbers_.size()) break;
    if (!matchesNumber(each.number(), place++)) return false;
  }
  // Points of the plane lie at height 0.
  return place == numbers_.size() || matchesNumber(0, place);
}

bool RequiredGroup::matchesValue(const Value& value) const {
  if (value.isText()) return matchesText(value.text());
  if (value.isNumber()) return matchesNumber(value.number());
  if (value.isCons()) return matchesPoint(value);
  const bool isSame = value.type() == lisp::Type::entity && value.entityName() == name_;
  return isSame != (relations_[0] == Relation::unequal);
}

bool RequiredGroup::matchesList(const Value& list) const {
  for (const Value& group : lisp::Elements(list)) {
    if (lisp::car(group).integer() == code_ && matchesValue(lisp::cdr(group))) return true;
  }
  return false;
}

/// All the applications must have data.
bool RequiredGroup::matchesXdata(const AcDbEntity& entity) const {
  resbuf* const data = entity.xData();
  if (!data) return false;
  const auto hasData = [&](const std::wstring& pattern) {
    for (const resbuf* each = data; each; each = each->rbnext) {
      if (each->restype == 1001 && lisp::matchesWildcard(upperCased(each->resval.rstring), pattern))
        return true;
    }
    return false;
  };
  const bool all = std::all_of(applications_.begin(), applications_.end(), hasData);
  acutRelRb(data);
  return all;
}

template <class TextOf>
bool RequiredGroup::matchesNamed(const void* key, TextOf textOf) {
  if (key == lastKey_ && key) return lastVerdict_;
  const auto [found, isNew] = verdicts_.try_emplace(key, false);
  if (isNew) found->second = matchesText(textOf());
  lastKey_ = key;
  return lastVerdict_ = found->second;
}

bool RequiredGroup::matches(Candidate& candidate) {
  const AcDbEntity& entity = candidate.entity;
  const auto named = [&](AcDbObjectId id) { return matchesNamed(id.stub(), [&] { return recordName(id); }); };
  switch (code_) {
    case -3:
      return matchesXdata(entity);
    case 0:
      if (AcDbProxyEntity::cast(&entity)) return matchesText(typeNameOf(entity));
      return matchesNamed(entity.isA(), [&] { return typeNameOf(entity); });
    case 2:
      if (const auto* const reference = AcDbBlockReference::cast(&entity)) {
        return named(reference->blockTableRecord());
      }
      break;
    case 6:
      return named(entity.linetypeId());
    case 8:
      return named(entity.layerId());
    case 48:
      return matchesNumber(entity.linetypeScale());
    case 60:
      return matchesNumber(entity.visibility() == AcDb::kInvisible);
    case 62:
      return matchesNumber(entity.colorIndex());
    case 67:
      return matchesNumber(isPaperSpace(blockOf(entity)));
    case 370:
      return matchesNumber(entity.lineWeight());
    case 410: {
      const AcDbObjectId block = blockOf(entity);
      return matchesNamed(block.stub(), [&] { return layoutNameOf(block); });
    }
    default:
      break;
  }
  return matchesList(candidate.list());
}

}  // namespace host
