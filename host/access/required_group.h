#pragma once

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "brx/db_entity.h"
#include "host/lisp/value.h"

namespace host {

/// An entity that a filter judges, with its list, which is made when a test first asks for it.
class Candidate {
 public:
  explicit Candidate(const AcDbEntity& entity) : entity(entity) {}
  const lisp::Value& list();
  const AcDbEntity& entity;

 private:
  std::optional<lisp::Value> list_;
};

/// One group that an entity must have. What all entities have is asked of the entity itself, anything else
/// of its list.
class RequiredGroup {
 public:
  /// `operators` are relational tests between commas; "" asks for the value itself. Throws FilterError.
  RequiredGroup(int code, const lisp::Value& value, std::wstring_view operators);
  bool matches(Candidate& candidate);

 private:
  enum class Relation { any, equal, unequal, less, lessEqual, greater, greaterEqual, someBits, allBits };
  static std::optional<Relation> relationNamed(std::wstring_view name);

  void takeRelations(std::wstring_view operators);
  void takeValue(const lisp::Value& value);
  void takePoint(const lisp::Value& value);
  void takeApplications(const lisp::Value& value);
  bool matchesText(std::wstring_view text) const;
  bool matchesNumber(double number, size_t place = 0) const;
  bool matchesPoint(const lisp::Value& point) const;
  bool matchesValue(const lisp::Value& value) const;
  bool matchesList(const lisp::Value& list) const;
  bool matchesXdata(const AcDbEntity& entity) const;
  template <class TextOf>
  bool matchesNamed(const void* key, TextOf textOf);

  int code_;
  std::vector<Relation> relations_;
  std::wstring pattern_;
  std::vector<double> numbers_;
  int64_t name_ = 0;
  std::vector<std::wstring> applications_;
  /// What was found for a layer, class, block: there are few of them.
  std::unordered_map<const void*, bool> verdicts_;
  const void* lastKey_ = nullptr;
  bool lastVerdict_ = false;
};

}  // namespace host
