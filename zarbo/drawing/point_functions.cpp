#include "zarbo/drawing/point_functions.h"

#include "brx/editor_input.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"

int kvGetPoint() {
  acedRetNil();
  LispArgs args;
  std::wstring prompt;
  getString(args.cursor, prompt);
  ads_point point;
  if (acedGetPoint(nullptr, prompt.c_str(), point) == RTNORM) acedRetPoint(point);
  return done;
}

int kvGetPointWithKeywords() {
  acedRetNil();
  LispArgs args;
  std::wstring prompt, keywords;
  getString(args.cursor, prompt);
  getString(args.cursor, keywords);
  acedInitGet(RSG_NONULL, keywords.c_str());
  ads_point point;
  ACHAR keyword[132];
  switch (acedGetPoint(nullptr, prompt.c_str(), point)) {
    case RTNORM:
      acedRetPoint(point);
      break;
    case RTKWORD:
      if (acedGetInput(keyword) == RTNORM) acedRetStr(keyword);
      break;
    default:
      break;
  }
  return done;
}

int kvGetCorner() {
  acedRetNil();
  LispArgs args;
  double base[3];
  std::wstring prompt;
  if (!getPoint3d(args.cursor, base)) return wrongType;
  getString(args.cursor, prompt);
  ads_point corner;
  if (acedGetCorner(base, prompt.c_str(), corner) == RTNORM) acedRetPoint(corner);
  return done;
}
