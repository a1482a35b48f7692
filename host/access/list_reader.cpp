#include "host/access/list_reader.h"

#include <algorithm>
#include <cmath>

#include "host/database/group_codes.h"
#include "host/lisp/builtins.h"
#include "host/lisp/printer.h"
#include "platform/text/hex.h"

namespace host {
namespace {

using lisp::Value;

[[noreturn]] void badGroup(const Value& element) {
  throw lisp::LispError(L"bad DXF group: " + lisp::printed(element, lisp::Style::readable));
}

bool isFinite(const Value& value) { return value.isNumber() && std::isfinite(value.number()); }

bool isPoint(const Value& value) {
  size_t count = 0;
  const Value* at = &value;
  for (; at->isCons(); at = &lisp::cdr(*at), ++count) {
    if (!isFinite(lisp::car(*at))) return false;
  }
  return at->isNil() && (count == 2 || count == 3);
}

bool isHexadecimal(std::wstring_view text) {
  return text.size() % 2 == 0 &&
         std::all_of(text.begin(), text.end(), [](wchar_t c) { return hexDigit(c) >= 0; });
}

constexpr size_t mostBytes = 127;

bool suits(int code, const Value& value) {
  switch (groupKind(code)) {
    case GroupKind::text:
      return value.isText();
    case GroupKind::real:
      return isFinite(value);
    case GroupKind::point:
      return isPoint(value);
    case GroupKind::handle:
      return value.type() == lisp::Type::entity || value.isNil();
    case GroupKind::binary:
      return value.isText() && isHexadecimal(value.text()) && value.text().size() <= 2 * mostBytes;
    case GroupKind::int64:
      return isFinite(value) && std::abs(value.number()) < 9e18;
    case GroupKind::int32:
      return value.isInteger();
    case GroupKind::boolean:
    case GroupKind::int16:
      return value.isInteger() && value.integer() >= INT16_MIN && value.integer() <= INT16_MAX;
  }
  return false;
}

void copyPoint(const Value& value, ads_real* to) {
  size_t place = 0;
  for (const Value& each : lisp::Elements(value)) to[place++] = each.number();
}

}  // namespace

ListGroups groupsOf(const Value& list) {
  ListGroups groups;
  const Value* at = &list;
  for (; at->isCons(); at = &lisp::cdr(*at)) {
    const Value& element = lisp::car(*at);
    if (!element.isCons() || !lisp::car(element).isInteger()) badGroup(element);
    const int code = lisp::car(element).integer();
    const Value& value = lisp::cdr(element);
    const bool isKnown = code == -3 ? value.isList() : code <= 1071 && suits(code, value);
    if (!isKnown) badGroup(element);
    groups.push_back({code, &value});
  }
  if (at->isTrue()) lisp::failType(L"listp", list);
  return groups;
}

const Value* findGroup(const ListGroups& groups, int code) {
  for (const ListGroup& each : groups) {
    if (each.code == code) return each.value;
  }
  return nullptr;
}

int integerGroup(const ListGroups& groups, int code, int missing) {
  const Value* const found = findGroup(groups, code);
  return found ? found->integer() : missing;
}

std::wstring textGroup(const ListGroups& groups, int code) {
  const Value* const found = findGroup(groups, code);
  return found ? found->text() : std::wstring();
}

resbuf bufferOf(const ListGroup& group, std::string& bytes) {
  const Value& value = *group.value;
  resbuf item{};
  item.restype = static_cast<int16_t>(group.code);
  switch (groupKind(group.code)) {
    case GroupKind::text:
      item.resval.rstring = const_cast<ACHAR*>(value.text().c_str());
      break;
    case GroupKind::real:
      item.resval.rreal = value.number();
      break;
    case GroupKind::point:
      copyPoint(value, item.resval.rpoint);
      break;
    case GroupKind::handle:
      item.resval.rlname[0] = value.isNil() ? 0 : value.entityName();
      break;
    case GroupKind::int64:
      item.resval.mnInt64 = static_cast<int64_t>(value.number());
      break;
    case GroupKind::int32:
      item.resval.rlong = value.integer();
      break;
    case GroupKind::binary: {
      const std::wstring& digits = value.text();
      bytes.clear();
      for (size_t i = 0; i + 1 < digits.size(); i += 2) {
        bytes += static_cast<char>(hexDigit(digits[i]) * 16 + hexDigit(digits[i + 1]));
      }
      item.resval.rbinary = {static_cast<short>(bytes.size()), bytes.data()};
      break;
    }
    default:
      item.resval.rint = static_cast<int16_t>(value.integer());
  }
  return item;
}

ListReader::ListReader(AcDbDatabase& drawing, const ListGroups& groups) : drawing_(drawing), groups_(groups) {
  const auto mark =
      std::find_if(groups.begin(), groups.end(), [](const ListGroup& each) { return each.code == 100; });
  firstMark_ = static_cast<size_t>(mark - groups.begin());
}

Acad::ErrorStatus ListReader::readItem(resbuf* item) {
  if (status_ != Acad::eOk) return status_;
  if (next_ == places_.size()) return Acad::eEndOfObject;
  *item = bufferOf(groups_[places_[next_++]], bytes_);
  return Acad::eOk;
}

Acad::ErrorStatus ListReader::pushBackItem() {
  if (next_ == 0) return Acad::eInvalidInput;
  --next_;
  return Acad::eOk;
}

bool ListReader::atSubclassData(const ACHAR* subclass) {
  const std::wstring_view name = subclass;
  places_.clear();
  next_ = 0;
  if (firstMark_ == groups_.size()) {
    takeAll();
  } else if (name == L"AcDbEntity") {
    takeEntityData();
  } else {
    takeSubclass(name);
    if (places_.empty()) takeAll();
  }
  return true;
}

/// From before the first mark, the mark of entities, and the host's own subclasses, which have no other use
/// for the codes.
void ListReader::takeEntityData() {
  bool taking = true;
  for (size_t i = 0; i < groups_.size(); ++i) {
    const ListGroup& group = groups_[i];
    if (group.code == 100) taking = group.value->text().starts_with(L"AcDb");
    if (taking && isEntityCode(group.code)) places_.push_back(i);
  }
}

void ListReader::takeSubclass(std::wstring_view subclass) {
  bool taking = false;
  for (size_t i = firstMark_; i < groups_.size(); ++i) {
    const ListGroup& group = groups_[i];
    if (group.code == 100) {
      taking = group.value->text() == subclass;
    } else if (taking && !isIdentity(group.code)) {
      places_.push_back(i);
    }
  }
}

/// What stands in braces is of other objects: reactors, the extension dictionary.
void ListReader::takeAll() {
  int depth = 0;
  for (size_t i = 0; i < groups_.size(); ++i) {
    const ListGroup& group = groups_[i];
    if (group.code == 102) {
      depth += group.value->text().starts_with(L"{") ? 1 : -1;
    } else if (depth <= 0 && group.code != 100 && !isIdentity(group.code)) {
      places_.push_back(i);
    }
  }
}

}  // namespace host
