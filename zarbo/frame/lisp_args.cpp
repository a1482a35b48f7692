#include "zarbo/frame/lisp_args.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace {

constexpr int16_t variantTrue = -1;

template <class Integer>
Integer cutToward0(double value) {
  using Limits = std::numeric_limits<Integer>;
  if (std::isnan(value)) return 0;
  // 2^63 itself is a double, the largest 64-bit integer isn't: compare before the conversion.
  if (value >= -static_cast<double>(Limits::min())) return Limits::max();
  if (value <= static_cast<double>(Limits::min())) return Limits::min();
  return static_cast<Integer>(value);
}

template <class Integer>
bool getInteger(ArgCursor& cursor, Integer& value) {
  if (!cursor) return false;
  switch (cursor->restype) {
    case RTSHORT:
      value = cursor->resval.rint;
      break;
    case RTLONG:
      value = cursor->resval.rlong;
      break;
    case RTREAL:
      value = cutToward0<Integer>(cursor->resval.rreal);
      break;
    default:
      if (cursor->restype >= 1000) return false;
      value = cursor->restype;
      return true;
  }
  cursor = cursor->rbnext;
  return true;
}

bool getName(ArgCursor& cursor, int type, ads_name name) {
  if (!cursor || cursor->restype != type) return false;
  ads_name_set(cursor->resval.rlname, name);
  cursor = cursor->rbnext;
  return true;
}

bool isPointGroup(int type) { return type >= 10 && type <= 17; }

/// A plain number; unlike `getNumber` it never takes a group code for one.
bool readCoordinate(ArgCursor& cursor, double& value) {
  if (!cursor) return false;
  switch (cursor->restype) {
    case RTREAL:
      value = cursor->resval.rreal;
      break;
    case RTLONG:
      value = cursor->resval.rlong;
      break;
    case RTSHORT:
      value = cursor->resval.rint;
      break;
    default:
      return false;
  }
  cursor = cursor->rbnext;
  return true;
}

bool skip(ArgCursor& cursor, int type) {
  if (!cursor || cursor->restype != type) return false;
  cursor = cursor->rbnext;
  return true;
}

}  // namespace

bool getString(ArgCursor& cursor, std::wstring& text) {
  if (!cursor || cursor->restype != RTSTR) return false;
  text = cursor->resval.rstring ? cursor->resval.rstring : L"";
  cursor = cursor->rbnext;
  return true;
}

bool getStringToChars(ArgCursor& cursor, std::unique_ptr<char[]>& text) {
  std::wstring wide;
  if (!getString(cursor, wide)) return false;
  text = std::make_unique<char[]>(wide.size() + 1);
  std::transform(wide.begin(), wide.end(), text.get(), [](wchar_t c) { return static_cast<char>(c); });
  return true;
}

bool getLong(ArgCursor& cursor, int32_t& value) { return getInteger(cursor, value); }
bool getLong64(ArgCursor& cursor, int64_t& value) { return getInteger(cursor, value); }

bool getReal(ArgCursor& cursor, double& value) {
  if (!cursor || cursor->restype != RTREAL) return false;
  value = cursor->resval.rreal;
  cursor = cursor->rbnext;
  return true;
}

bool getNumber(ArgCursor& cursor, double& value) {
  if (getReal(cursor, value)) return true;
  int32_t whole;
  if (!getLong(cursor, whole)) return false;
  value = whole;
  return true;
}

bool getEntityName(ArgCursor& cursor, ads_name name) { return getName(cursor, RTENAME, name); }
bool getPickSet(ArgCursor& cursor, ads_name set) { return getName(cursor, RTPICKS, set); }

bool getFlag(ArgCursor& cursor, bool& flag) {
  if (!cursor || cursor->restype == RTLB) return false;
  flag = cursor->restype != RTNIL && cursor->restype != RTLE;
  if (cursor->restype != RTLE) cursor = cursor->rbnext;
  return true;
}

bool getVariantFlag(ArgCursor& cursor, int16_t& flag) {
  bool plain;
  if (!getFlag(cursor, plain)) return false;
  flag = plain ? variantTrue : 0;
  return true;
}

bool getPoint3d(ArgCursor& cursor, double (&xyz)[3]) {
  if (!cursor) return false;
  const int type = cursor->restype;
  if (type == RT3DPOINT || type == RTPOINT || isPointGroup(type)) {
    std::memcpy(xyz, cursor->resval.rpoint, sizeof xyz);
    if (type == RTPOINT) xyz[2] = 0;
    cursor = cursor->rbnext;
    return true;
  }
  ArgCursor ahead = cursor;
  double x, y;
  if (!readCoordinate(ahead, x) || !readCoordinate(ahead, y)) return false;
  xyz[0] = x, xyz[1] = y;
  if (!readCoordinate(ahead, xyz[2])) xyz[2] = 0;
  cursor = ahead;
  return true;
}

bool getPoint2d(ArgCursor& cursor, double (&xy)[2]) {
  if (!cursor) return false;
  const int type = cursor->restype;
  if (type == RT3DPOINT || type == RTPOINT || isPointGroup(type)) {
    std::memcpy(xy, cursor->resval.rpoint, sizeof xy);
    cursor = cursor->rbnext;
    return true;
  }
  ArgCursor ahead = cursor;
  double x, y;
  if (!getReal(ahead, x) || !getReal(ahead, y)) return false;
  xy[0] = x, xy[1] = y;
  cursor = ahead;
  return true;
}

bool getNamedPair(ArgCursor& cursor, std::wstring& name, int32_t& value) {
  if (!isNamedPair(cursor)) return false;
  ArgCursor ahead = cursor->rbnext;
  std::wstring text;
  int32_t number;
  if (!getString(ahead, text) || !getLong(ahead, number)) return false;
  name = std::move(text);
  value = number;
  cursor = ahead;
  return true;
}

bool skipListBegin(ArgCursor& cursor) { return skip(cursor, RTLB); }
bool skipListEnd(ArgCursor& cursor) { return skip(cursor, RTLE); }

bool skipItem(ArgCursor& cursor) {
  if (!cursor) return false;
  cursor = cursor->rbnext;
  return true;
}

bool isNamedPair(ArgCursor cursor) {
  return cursor && cursor->restype == RTLB && cursor->rbnext && cursor->rbnext->rbnext &&
         cursor->rbnext->rbnext->restype == RTDOTE;
}
