#include "zarbo/jigs/user_angle.h"

#include <cmath>

#include "brx/editor_input.h"
#include "brx/ge_point.h"

namespace {

constexpr short worldSystem = 0, userSystem = 1;

AcGePoint3d toWorld(const AcGePoint3d& userPoint) {
  resbuf from{}, to{};
  from.restype = to.restype = RTSHORT;
  from.resval.rint = userSystem, to.resval.rint = worldSystem;
  AcGePoint3d point = userPoint;
  acedTrans(asDblArray(userPoint), &from, &to, 0, asDblArray(point));
  return point;
}

}  // namespace

double worldAngle(double userAngle) {
  const AcGeVector3d way = toWorld({std::cos(userAngle), std::sin(userAngle), 0}) - toWorld({});
  return way.convert2d().angle();
}
