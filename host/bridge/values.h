#pragma once

#include "brx/resbuf.h"
#include "host/database/selection_set.h"
#include "host/lisp/objects.h"
#include "host/lisp/value.h"

namespace host {

/// LISP values as result buffers and back.

/// A selection set in LISP's hands; the number is its first word as an `ads_name`.
struct PickSet : lisp::Opaque {
  int64_t number;
  explicit PickSet(int64_t number) : number(number) { selectionSets().retain(number); }
  ~PickSet() override { selectionSets().release(number); }
  std::wstring_view typeName() const override { return L"PICKSET"; }
  std::wstring print() const override { return L"<Selection set: " + std::to_wstring(number) + L">"; }
};

/// New buffers for the values, the caller's. Lists are flat between their marks, and a list of two or
/// three numbers is a point. Throws LispError for a value that modules don't know, such as a symbol
/// other than T.
resbuf* toBuffers(lisp::Arguments values);

/// A group of an object's list: `(code . value)`, points as `(code x y z)`, bytes as hexadecimal digits.
lisp::Value groupPair(const resbuf& group);

/// One value from the buffers at `at`, which moves on behind it. Group codes give pairs of the code
/// and the value. A list that isn't closed ends with the buffers; a stray mark reads as nil.
lisp::Value takeValue(const resbuf*& at, const lisp::Value& t);
/// All of them: a list that stands in its own parentheses as it is, anything else as a list of the values.
lisp::Value toList(const resbuf* values, const lisp::Value& t);

}  // namespace host
