#include "zarbo/drawing/kv_leader.h"

/// The curve queries: all of them look at the chord only, and none checks its range.

AcGeVector3d KVLeader::unitChord() const { return (end_ - start_).normal(AcGeContext::gTol); }

Acad::ErrorStatus KVLeader::getStartParam(double& param) const { return param = 0.0, Acad::eOk; }
Acad::ErrorStatus KVLeader::getEndParam(double& param) const {
  return param = (end_ - start_).length(), Acad::eOk;
}
Acad::ErrorStatus KVLeader::getStartPoint(AcGePoint3d& point) const { return point = start_, Acad::eOk; }
Acad::ErrorStatus KVLeader::getEndPoint(AcGePoint3d& point) const { return point = end_, Acad::eOk; }
Acad::ErrorStatus KVLeader::getDistAtParam(double param, double& distance) const {
  return distance = param, Acad::eOk;
}
Acad::ErrorStatus KVLeader::getParamAtDist(double distance, double& param) const {
  return param = distance, Acad::eOk;
}
Acad::ErrorStatus KVLeader::getDistAtPoint(const AcGePoint3d& point, double& distance) const {
  return distance = (point - start_).length(), Acad::eOk;
}
Acad::ErrorStatus KVLeader::getParamAtPoint(const AcGePoint3d& point, double& param) const {
  return param = (point - start_).dotProduct(unitChord()), Acad::eOk;
}
Acad::ErrorStatus KVLeader::getPointAtDist(double distance, AcGePoint3d& point) const {
  return point = start_ + unitChord() * distance, Acad::eOk;
}
Acad::ErrorStatus KVLeader::getPointAtParam(double param, AcGePoint3d& point) const {
  return getPointAtDist(param, point);
}
