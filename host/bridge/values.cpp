#include "host/bridge/values.h"

#include <array>
#include <cmath>
#include <vector>

#include "brx/lisp_calls.h"
#include "host/database/group_codes.h"
#include "host/lisp/interpreter.h"
#include "host/lisp/printer.h"
#include "platform/text/hex.h"

namespace host {
namespace {

using lisp::Type;
using lisp::Value;

class BufferWriter {
 public:
  ~BufferWriter() {
    if (head_) acutRelRb(head_);
  }
  resbuf* take() { return std::exchange(head_, nullptr); }

  void write(const Value& value) {
    switch (value.type()) {
      case Type::nil:
        add(RTNIL);
        break;
      case Type::integer:
        writeInteger(value.integer());
        break;
      case Type::real:
        add(RTREAL).resval.rreal = value.real();
        break;
      case Type::text:
        acutNewString(value.text().c_str(), add(RTSTR).resval.rstring);
        break;
      case Type::entity:
        add(RTENAME).resval.rlname[0] = value.entityName();
        break;
      case Type::cons:
        writeList(value);
        break;
      default:
        writeOther(value);
    }
  }

 private:
  resbuf& add(int type) {
    resbuf* const made = acutNewRb(type);
    (tail_ ? tail_->rbnext : head_) = made;
    tail_ = made;
    return *made;
  }

  void writeInteger(int32_t value) {
    if (value >= INT16_MIN && value <= INT16_MAX) {
      add(RTSHORT).resval.rint = static_cast<int16_t>(value);
    } else {
      add(RTLONG).resval.rlong = value;
    }
  }

  bool writePoint(const Value& list) {
    double numbers[3] = {};
    size_t count = 0;
    const Value* at = &list;
    for (; at->isCons() && count < 3 && lisp::car(*at).isNumber(); at = &lisp::cdr(*at)) {
      numbers[count++] = lisp::car(*at).number();
    }
    if (!at->isNil() || count < 2) return false;
    resbuf& point = add(count == 2 ? RTPOINT : RT3DPOINT);
    for (size_t i = 0; i < 3; ++i) point.resval.rpoint[i] = numbers[i];
    return true;
  }

  /// Deep nesting costs memory, not stack.
  void writeList(const Value& list) {
    if (writePoint(list)) return;
    add(RTLB);
    std::vector<const Value*> rests = {&list};
    while (!rests.empty()) {
      const Value& rest = *rests.back();
      if (rest.isCons()) {
        rests.back() = &lisp::cdr(rest);
        const Value& element = lisp::car(rest);
        if (!element.isCons()) {
          write(element);
        } else if (!writePoint(element)) {
          add(RTLB);
          rests.push_back(&element);
        }
        continue;
      }
      if (rest.isTrue()) {
        add(RTDOTE);
        write(rest);
      }
      add(RTLE);
      rests.pop_back();
    }
  }

  void writeOther(const Value& value) {
    if (value.isSymbol() && value.symbol()->name == L"T") {
      add(RTT);
      return;
    }
    if (value.type() == Type::opaque) {
      if (const auto* set = dynamic_cast<const PickSet*>(value.opaque())) {
        add(RTPICKS).resval.rlname[0] = set->number;
        return;
      }
    }
    throw lisp::LispError(L"bad argument type: " + lisp::printed(value, lisp::Style::readable));
  }

  resbuf* head_ = nullptr;
  resbuf* tail_ = nullptr;
};

/// Short texts that went to LISP lately. A text of the language never changes, so that one serves for all
/// that are equal: the names of fields come again with every record.
class RecentTexts {
 public:
  Value valueOf(const ACHAR* text) {
    uint32_t hash = 2166136261;
    size_t length = 0;
    for (; text[length]; ++length) {
      if (length == longest) return Value(std::wstring_view(text));
      hash = (hash ^ static_cast<uint32_t>(text[length])) * 16777619;
    }
    Known& known = known_[(hash ^ hash >> 16) % places];
    const std::wstring_view wanted(text, length);
    // The hash first: the other text may have left the cache.
    if (known.hash != hash || !known.value.isText() || known.value.text() != wanted) {
      known = {hash, Value(wanted)};
    }
    return known.value;
  }

 private:
  static constexpr size_t longest = 32, places = 256;
  struct Known {
    uint32_t hash;
    Value value;
  };
  std::array<Known, places> known_{};
};

Value textValue(const ACHAR* text) {
  static auto& recent = *new RecentTexts;  // outlives the statics of unloading modules
  return text ? recent.valueOf(text) : Value(std::wstring_view());
}

Value listOfNumbers(const ads_real* numbers, size_t count) {
  lisp::ListBuilder list;
  for (size_t i = 0; i < count; ++i) list.add(Value(numbers[i]));
  return list.take();
}

/// LISP's integers have 32 bits.
Value numberOf(int64_t number) {
  if (number >= INT32_MIN && number <= INT32_MAX) return Value(static_cast<int32_t>(number));
  return Value(static_cast<double>(number));
}

std::wstring hexadecimal(const ads_binary& bytes) {
  std::wstring text;
  for (short i = 0; i < bytes.clen; ++i) appendHex(text, static_cast<unsigned char>(bytes.buf[i]));
  return text;
}

/// Points that are kept as a file has them lack coordinates.
Value pointOf(const ads_point& kept) {
  const ads_point shown = {kept[0], std::isnan(kept[1]) ? 0 : kept[1], kept[2]};
  return listOfNumbers(shown, std::isnan(shown[2]) ? 2 : 3);
}

}  // namespace

Value groupPair(const resbuf& group) {
  const int code = group.restype;
  Value value;
  switch (groupKind(code)) {
    case GroupKind::point:
      value = pointOf(group.resval.rpoint);
      break;
    case GroupKind::real:
      value = Value(group.resval.rreal);
      break;
    case GroupKind::int32:
      value = Value(group.resval.rlong);
      break;
    case GroupKind::int64:
      value = numberOf(group.resval.mnInt64);
      break;
    case GroupKind::handle:
      value = Value::entity(group.resval.rlname[0]);
      break;
    case GroupKind::text:
      value = Value(std::wstring_view(group.resval.rstring ? group.resval.rstring : L""));
      break;
    case GroupKind::binary:
      value = Value(std::wstring_view(hexadecimal(group.resval.rbinary)));
      break;
    default:
      value = Value(int32_t{group.resval.rint});
  }
  return lisp::cons(Value(int32_t{code}), std::move(value));
}

namespace {

Value atom(const resbuf& buffer, const Value& t) {
  switch (buffer.restype) {
    case RTSHORT:
      return Value(int32_t{buffer.resval.rint});
    case RTLONG:
      return Value(buffer.resval.rlong);
    case RTREAL:
    case RTANG:
    case RTORINT:
      return Value(buffer.resval.rreal);
    case RTSTR:
      return textValue(buffer.resval.rstring);
    case RTPOINT:
      return listOfNumbers(buffer.resval.rpoint, 2);
    case RT3DPOINT:
      return listOfNumbers(buffer.resval.rpoint, 3);
    case RTENAME:
      return Value::entity(buffer.resval.rlname[0]);
    case RTPICKS:
      return Value(static_cast<lisp::Opaque*>(new PickSet(buffer.resval.rlname[0])));
    case RTT:
      return t;
    default:
      return buffer.restype < RTNONE ? groupPair(buffer) : Value();
  }
}

/// One list that is being read, with the dot behind which its last value stands.
struct OpenList {
  lisp::ListBuilder values;
  bool afterDot = false;
  void add(Value value) {
    if (afterDot) {
      values.end(std::move(value));
    } else {
      values.add(std::move(value));
    }
  }
};

}  // namespace

resbuf* toBuffers(lisp::Arguments values) {
  BufferWriter writer;
  for (const Value& each : values) writer.write(each);
  return writer.take();
}

namespace {

bool isMark(const resbuf& buffer) {
  return buffer.restype == RTLB || buffer.restype == RTLE || buffer.restype == RTDOTE;
}

/// The buffer behind a pair of two plain values whose list begins here, the form of all fields of records;
/// null for any other list.
const resbuf* behindPlainPair(const resbuf& begin) {
  const resbuf* const key = begin.rbnext;
  if (!key || isMark(*key) || !key->rbnext || key->rbnext->restype != RTDOTE) return nullptr;
  const resbuf* const value = key->rbnext->rbnext;
  if (!value || isMark(*value) || !value->rbnext || value->rbnext->restype != RTLE) return nullptr;
  return value->rbnext;
}

}  // namespace

Value takeValue(const resbuf*& at, const Value& t) {
  std::vector<OpenList> open;
  if (at && at->restype == RTLB) open.reserve(4);
  while (at) {
    const resbuf& buffer = *at;
    at = at->rbnext;
    Value value;
    if (buffer.restype == RTLB) {
      if (const resbuf* const end = behindPlainPair(buffer)) {
        Value key = atom(*buffer.rbnext, t);
        value = lisp::cons(std::move(key), atom(*buffer.rbnext->rbnext->rbnext, t));
        at = end->rbnext;
        if (open.empty()) return value;
        open.back().add(std::move(value));
        continue;
      }
      open.emplace_back();
      continue;
    }
    if (buffer.restype == RTDOTE && !open.empty()) {
      open.back().afterDot = true;
      continue;
    }
    if (buffer.restype == RTLE && !open.empty()) {
      value = open.back().values.take();
      open.pop_back();
    } else {
      value = atom(buffer, t);
    }
    if (open.empty()) return value;
    open.back().add(std::move(value));
  }
  while (open.size() > 1) {
    Value inner = open.back().values.take();
    open.pop_back();
    open.back().add(std::move(inner));
  }
  return open.empty() ? Value() : open.back().values.take();
}

Value toList(const resbuf* values, const Value& t) {
  const resbuf* at = values;
  if (at && at->restype == RTLB) {
    Value whole = takeValue(at, t);
    if (!at) return whole;
    at = values;
  }
  lisp::ListBuilder list;
  while (at) list.add(takeValue(at, t));
  return list.take();
}

}  // namespace host
