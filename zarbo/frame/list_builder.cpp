#include "zarbo/frame/list_builder.h"

#include <cwchar>
#include <limits>

resbuf* LispAtom::toBuffer() const {
  resbuf* const made = acutNewRb(type_);
  if (type_ != RTSTR) {
    made->resval = value_;
    return made;
  }
  if (ended_) {
    acutNewString(text_.data(), made->resval.rstring);
    return made;
  }
  // Copied by length, as a view need not end in a NUL; what stands behind a NUL inside is lost to LISP.
  constexpr size_t shortText = 64;
  if (text_.size() < shortText) {
    ACHAR text[shortText];
    text[text_.copy(text, shortText)] = 0;
    acutNewString(text, made->resval.rstring);
  } else {
    acutNewString(std::wstring(text_).c_str(), made->resval.rstring);
  }
  return made;
}

namespace {

void appendOne(LispList& list, resbuf* value) {
  (list.tail ? list.tail->rbnext : list.head) = value;
  list.tail = value;
}

}  // namespace

void appendBuffers(LispList& list, resbuf* values) {
  if (!values) return;
  (list.tail ? list.tail->rbnext : list.head) = values;
  list.tail = values;
  while (list.tail->rbnext) list.tail = list.tail->rbnext;
}

void beginList(LispList& list) {
  if (list.head) acutRelRb(list.head);
  list.head = list.tail = nullptr;
  appendMark(list, RTLB);
}

void endListAndReturn(LispList& list) {
  appendMark(list, RTLE);
  acedRetList(list.head);
  acutRelRb(list.head);
  list.head = list.tail = nullptr;
}

void appendMark(LispList& list, int type) { appendOne(list, acutNewRb(type)); }

void appendValue(LispList& list, const LispAtom& value) { appendOne(list, value.toBuffer()); }

void appendPair(LispList& list, const LispAtom& key, const LispAtom& value) {
  appendPair(list, key, value.toBuffer());
}

void appendPair(LispList& list, const LispAtom& key, resbuf* values) {
  appendMark(list, RTLB);
  appendValue(list, key);
  appendMark(list, RTDOTE);
  appendBuffers(list, values);
  appendMark(list, RTLE);
}

void retNumber(int32_t value) {
  using Short = std::numeric_limits<int16_t>;
  if (value >= Short::min() && value <= Short::max()) {
    acedRetInt(value);
  } else {
    acedRetReal(value);
  }
}
