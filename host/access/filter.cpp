#include "host/access/filter.h"

#include <vector>

#include "host/access/required_group.h"
#include "host/bridge/values.h"
#include "host/database/stubs.h"
#include "platform/text/letters.h"

namespace host {
namespace {

using lisp::Value;

// What ERRNO tells of a filter.
enum : int {
  unexpectedEnd = 56,
  missingOperand = 57,
  badOperator = 58,
  emptyGrouping = 59,
  mismatchedEnd = 60,
  wrongCount = 61,
  tooDeep = 62,
  badCode = 63
};

constexpr size_t deepest = 100;

enum class Combination { all, any, exactlyOne, none };

struct Grouping {
  std::wstring_view begin, end;
  Combination combination;
  size_t fewest, most;
};

constexpr Grouping groupings[] = {
    {L"<AND", L"AND>", Combination::all, 1, SIZE_MAX},
    {L"<OR", L"OR>", Combination::any, 1, SIZE_MAX},
    {L"<XOR", L"XOR>", Combination::exactlyOne, 2, 2},
    {L"<NOT", L"NOT>", Combination::none, 1, 1},
};

const Grouping* beginning(std::wstring_view word) {
  for (const Grouping& each : groupings) {
    if (each.begin == word) return &each;
  }
  return nullptr;
}

bool isEnd(std::wstring_view word) {
  for (const Grouping& each : groupings) {
    if (each.end == word) return true;
  }
  return false;
}

struct Item {
  int code;
  Value value;
};

std::vector<Item> itemsOf(const Value& list) {
  std::vector<Item> items;
  for (const Value& each : lisp::Elements(list)) {
    if (!each.isCons() || !lisp::car(each).isInteger()) throw FilterError(badCode);
    items.push_back({lisp::car(each).integer(), lisp::cdr(each)});
  }
  return items;
}

std::vector<Item> itemsOf(const resbuf* at) {
  std::vector<Item> items;
  while (at) {
    const resbuf& buffer = *at;
    at = at->rbnext;
    if (buffer.restype == RTDXF0) {
      items.push_back({0, Value(std::wstring_view(buffer.resval.rstring))});
    } else if (buffer.restype == -3) {
      lisp::ListBuilder applications;
      for (; at && at->restype >= 1000 && at->restype < RTNONE; at = at->rbnext) {
        if (at->restype == 1001) applications.add(Value(std::wstring_view(at->resval.rstring)));
      }
      items.push_back({-3, applications.take()});
    } else if (buffer.restype < RTNONE) {
      items.push_back({buffer.restype, lisp::cdr(groupPair(buffer))});
    } else {
      throw FilterError(badCode);
    }
  }
  return items;
}

}  // namespace

/// A test, or a combination of others.
struct EntityFilter::Node {
  Combination combination = Combination::all;
  std::vector<Node> parts;
  std::optional<RequiredGroup> test;

  bool matches(Candidate& candidate) {
    if (test) return test->matches(candidate);
    switch (combination) {
      case Combination::all:
        return std::all_of(parts.begin(), parts.end(), [&](Node& each) { return each.matches(candidate); });
      case Combination::any:
        return std::any_of(parts.begin(), parts.end(), [&](Node& each) { return each.matches(candidate); });
      case Combination::exactlyOne:
        return parts[0].matches(candidate) != parts[1].matches(candidate);
      case Combination::none:
        return !parts[0].matches(candidate);
    }
    return false;
  }

  static Node parse(const std::vector<Item>& items) {
    std::vector<std::pair<Node, const Grouping*>> open(1);
    for (size_t at = 0; at < items.size(); ++at) {
      const Item& item = items[at];
      if (item.code != -4) {
        open.back().first.add(item, L"");
        continue;
      }
      if (!item.value.isText()) throw FilterError(badOperator);
      const std::wstring word = upperCased(item.value.text());
      if (const Grouping* const grouping = beginning(word)) {
        if (open.size() == deepest) throw FilterError(tooDeep);
        open.emplace_back().first.combination = grouping->combination;
        open.back().second = grouping;
      } else if (isEnd(word)) {
        close(open, word);
      } else {
        if (++at == items.size() || items[at].code == -4) throw FilterError(missingOperand);
        open.back().first.add(items[at], word);
      }
    }
    if (open.size() > 1) throw FilterError(unexpectedEnd);
    return std::move(open[0].first);
  }

 private:
  void add(const Item& item, std::wstring_view operators) {
    parts.emplace_back().test.emplace(item.code, item.value, operators);
  }
  static void close(std::vector<std::pair<Node, const Grouping*>>& open, std::wstring_view word) {
    const Grouping* const grouping = open.back().second;
    if (!grouping || grouping->end != word) throw FilterError(mismatchedEnd);
    Node done = std::move(open.back().first);
    open.pop_back();
    if (done.parts.empty()) throw FilterError(emptyGrouping);
    if (done.parts.size() < grouping->fewest || done.parts.size() > grouping->most) {
      throw FilterError(wrongCount);
    }
    open.back().first.parts.push_back(std::move(done));
  }
};

EntityFilter::EntityFilter() : root_(std::make_unique<Node>()) {}
EntityFilter::EntityFilter(const Value& list) : root_(std::make_unique<Node>(Node::parse(itemsOf(list)))) {}
EntityFilter::EntityFilter(const resbuf* groups)
    : root_(std::make_unique<Node>(Node::parse(itemsOf(groups)))) {}
EntityFilter::EntityFilter(EntityFilter&&) noexcept = default;
EntityFilter& EntityFilter::operator=(EntityFilter&&) noexcept = default;
EntityFilter::~EntityFilter() = default;

bool EntityFilter::matches(AcDbObjectId id) {
  const AcDbEntity* const entity = id.isNull() ? nullptr : AcDbEntity::cast(id.stub()->object);
  if (!entity) return false;
  Candidate candidate(*entity);
  return root_->matches(candidate);
}

}  // namespace host
