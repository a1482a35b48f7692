#pragma once

#include <concepts>
#include <string>
#include <string_view>

#include "brx/lisp_calls.h"

/// Results of a LISP call: builders of lists of result buffers.

/// One plain value on its way into a list. Texts are borrowed until they are appended.
class LispAtom {
 public:
  LispAtom(std::wstring_view text) : type_(RTSTR), text_(text) {}  // NOLINT: values convert by themselves
  LispAtom(const std::wstring& text) : type_(RTSTR), text_(text) {}
  LispAtom(const ACHAR* text) : type_(RTSTR), ended_(true), text_(text ? text : L"") {}
  LispAtom(double value) : type_(RTREAL) { value_.rreal = value; }
  LispAtom(std::integral auto value) : type_(RTLONG) { value_.rlong = static_cast<int32_t>(value); }
  /// T or nil.
  LispAtom(bool flag) : type_(flag ? RTT : RTNIL) {}
  LispAtom(std::nullptr_t) : type_(RTNIL) {}
  static LispAtom point(double x, double y, double z) {
    LispAtom made(nullptr);
    made.type_ = RT3DPOINT;
    made.value_.rpoint[0] = x, made.value_.rpoint[1] = y, made.value_.rpoint[2] = z;
    return made;
  }
  /// Of a text with a NUL behind it, which needs no further copy.
  static LispAtom ended(std::wstring_view text) {
    LispAtom made(text);
    made.ended_ = text.data() != nullptr;
    return made;
  }
  /// Nil for the empty name.
  static LispAtom entity(const ads_name name) {
    LispAtom made(nullptr);
    if (ads_name_nil(name)) return made;
    made.type_ = RTENAME;
    ads_name_set(name, made.value_.rlname);
    return made;
  }

  /// A new buffer, the caller's.
  resbuf* toBuffer() const;

 private:
  int type_;
  bool ended_ = false;
  std::wstring_view text_;
  resbuf::ads_u_val value_{};
};

/// A list under construction; owns its buffers until it is returned.
struct LispList {
  resbuf* head = nullptr;
  resbuf* tail = nullptr;

  LispList() = default;
  ~LispList() {
    if (head) acutRelRb(head);
  }
  LispList(const LispList&) = delete;
  LispList& operator=(const LispList&) = delete;
};

void beginList(LispList& list);
/// Hands the closed list to LISP as the result of the call, and empties it.
void endListAndReturn(LispList& list);
/// A mark: `RTLB`, `RTLE` or `RTDOTE`.
void appendMark(LispList& list, int type);
void appendValue(LispList& list, const LispAtom& value);
/// Takes the buffers over; null appends nothing.
void appendBuffers(LispList& list, resbuf* values);
/// The dotted pair (key . value).
void appendPair(LispList& list, const LispAtom& key, const LispAtom& value);
/// The same with a value made of buffers, which are taken over.
void appendPair(LispList& list, const LispAtom& key, resbuf* values);

/// The number as the result of the call: an integer when it fits in 16 bits, else a real.
void retNumber(int32_t value);
