#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "brx/lisp_calls.h"

/// Arguments of a LISP call: getters over the flat list of result buffers.
///
/// A getter takes the cursor by reference, advances it by what it consumed and answers true; on
/// failure, and always on an empty cursor, it answers false and leaves cursor and output alone,
/// except where told.

using ArgCursor = const resbuf*;

/// The arguments of the call that is being served, freed at the end of the body.
class LispArgs {
 public:
  LispArgs() : list_(acedGetArgs()), cursor(list_) {}
  ~LispArgs() {
    if (list_) acutRelRb(list_);
  }
  LispArgs(const LispArgs&) = delete;
  LispArgs& operator=(const LispArgs&) = delete;

  bool empty() const { return !list_; }
  const resbuf* first() const { return list_; }

 private:
  resbuf* list_;

 public:
  ArgCursor cursor;
};

bool getString(ArgCursor& cursor, std::wstring& text);
/// Each character is cut to its low byte.
bool getStringToChars(ArgCursor& cursor, std::unique_ptr<char[]>& text);
/// Takes the two integer types and reals, which are cut toward zero (out of range: to the nearest
/// bound). A buffer whose type word is a group code below 1000 succeeds with that code as output and
/// stays under the cursor: callers that walk entity lists depend on it.
bool getLong(ArgCursor& cursor, int32_t& value);
bool getLong64(ArgCursor& cursor, int64_t& value);
bool getReal(ArgCursor& cursor, double& value);
bool getNumber(ArgCursor& cursor, double& value);
bool getEntityName(ArgCursor& cursor, ads_name name);
bool getPickSet(ArgCursor& cursor, ads_name set);
/// Nil gives false; a list's end gives false and stays under the cursor; a list's begin fails; all
/// else gives true.
bool getFlag(ArgCursor& cursor, bool& flag);
/// The same with the engine's booleans, 0 and -1.
bool getVariantFlag(ArgCursor& cursor, int16_t& flag);

/// A point buffer, a group code from 10 to 17, or two or three numbers in a row.
bool getPoint3d(ArgCursor& cursor, double (&xyz)[3]);
/// A point buffer, a group code from 10 to 17, or two reals in a row.
bool getPoint2d(ArgCursor& cursor, double (&xy)[2]);
template <class Point>
bool getPoint3d(ArgCursor& cursor, Point& point) {
  double xyz[3];
  if (!getPoint3d(cursor, xyz)) return false;
  point.x = xyz[0], point.y = xyz[1], point.z = xyz[2];
  return true;
}
template <class Point>
bool getPoint2d(ArgCursor& cursor, Point& point) {
  double xy[2];
  if (!getPoint2d(cursor, xy)) return false;
  point.x = xy[0], point.y = xy[1];
  return true;
}

/// Demands a dotted pair by `isNamedPair`, and then reads a number right behind the string, where the
/// dot stands: a true dotted pair fails. Its caller counts on that and takes the pair apart itself.
bool getNamedPair(ArgCursor& cursor, std::wstring& name, int32_t& value);
bool skipListBegin(ArgCursor& cursor);
bool skipListEnd(ArgCursor& cursor);
bool skipItem(ArgCursor& cursor);
/// True on a list's begin with a dot two buffers on; consumes nothing.
bool isNamedPair(ArgCursor cursor);
