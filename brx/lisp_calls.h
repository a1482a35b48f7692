#pragma once

#include <concepts>
#include <cstddef>

#include "brx/resbuf.h"

/// The LISP side of the host: defining functions, taking arguments, giving results, calling back.
/// All calls are made on the host's main thread. Unless told otherwise they answer `RTNORM`, or
/// `RTERROR` when the host refuses.

/// Defines `name` (case doesn't matter to LISP) under `code` in the current document, for the
/// application that the host is calling now.
int acedDefun(const ACHAR* name, int code);
int acedUndef(const ACHAR* name, int code);
/// Sets the entry that the host calls for `code`; null takes it away. The entry answers `RSRSLT` or
/// `RSERR`; the latter raises a LISP error in the caller.
int acedRegFunc(int (*entry)(), int code);
/// The function code of the call that is being served.
int acedGetFunCode();
/// Arguments of the call that is being served, as a list that the caller frees with `acutRelRb`;
/// null when there are none.
resbuf* acedGetArgs();

/// The result of the call that is being served; the last one set counts, none set is nil.
int acedRetStr(const ACHAR* text);
int acedRetInt(int value);
int acedRetReal(ads_real value);
int acedRetPoint(const ads_point point);
int acedRetT();
int acedRetNil();
int acedRetVoid();
/// The list is copied; the caller keeps it.
int acedRetList(const resbuf* list);
int acedRetVal(const resbuf* value);
/// `type` is `RTENAME` or `RTPICKS`.
int acedRetName(const ads_name name, int type);

/// Calls the LISP function named by the first buffer (`RTSTR`) with the values behind it. `result`
/// receives a list that the caller frees. A LISP error in the function gives `RTERROR`.
int acedInvoke(const resbuf* call, resbuf** result);

/// Builds a list from pairs of type word and value, ended by `RTNONE` (or 0). Strings are copied.
/// Words without a value (`RTLB`, `RTLE`, `RTDOTE`, `RTNIL`, `RTT`) stand alone. Null on failure.
resbuf* acutBuildList(int type, ...);
/// A buffer with the type word `type` and a zero value.
resbuf* acutNewRb(int type);
int acutRelRb(resbuf* list);
/// A copy that `acutRelRb` and the string slot of a buffer may own.
int acutNewString(const ACHAR* source, ACHAR*& copy);
void acutDelString(ACHAR*& text);

/// One value for a format mark, with its type.
struct AcutPrintValue {
  enum class Kind { integer, unsignedInteger, real, text, narrowText, character };
  Kind kind;
  uint8_t size = 0;  // of an integer, in bytes
  union {
    int64_t integer;
    uint64_t unsignedInteger;
    double real;
    const ACHAR* text;
    const char* narrowText;
  };

  template <std::integral T>
  AcutPrintValue(T value)  // NOLINT: values convert by themselves
      : kind(std::same_as<T, ACHAR>    ? Kind::character
             : std::signed_integral<T> ? Kind::integer
                                       : Kind::unsignedInteger),
        size(sizeof(T)) {
    if constexpr (std::signed_integral<T>) {
      integer = value;
    } else {
      unsignedInteger = value;
    }
  }
  AcutPrintValue(double value) : kind(Kind::real), real(value) {}
  AcutPrintValue(const ACHAR* value) : kind(Kind::text), text(value) {}
  AcutPrintValue(const char* value) : kind(Kind::narrowText), narrowText(value) {}
};
int acutPrintValues(const ACHAR* format, const AcutPrintValue* values, size_t count);

/// Prints on the command line by the marks of the C library's `printf`; `%s` takes wide text. The
/// values carry their types, so that a mark without a value, or with one of another kind, prints
/// nothing and can't be undefined behaviour.
template <class... Values>
int acutPrintf(const ACHAR* format, const Values&... values) {
  if constexpr (sizeof...(Values) == 0) {
    return acutPrintValues(format, nullptr, 0);
  } else {
    const AcutPrintValue list[] = {AcutPrintValue(values)...};
    return acutPrintValues(format, list, sizeof...(Values));
  }
}
int acedPrompt(const ACHAR* text);
/// A message that the user must acknowledge.
int acedAlert(const ACHAR* text);
int acedTextScr();
int acedGraphScr();

/// Host variables. A string value of `result` is the caller's to free by `acutDelString`.
int acedGetVar(const ACHAR* name, resbuf* result);
int acedSetVar(const ACHAR* name, const resbuf* value);
/// Finds a file on the host's search path; `result` has room for 1,024 characters.
int acedFindFile(const ACHAR* name, ACHAR* result);
