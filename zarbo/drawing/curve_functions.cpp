#include "brx/db_curves.h"
#include "zarbo/drawing/entity_functions.h"
#include "zarbo/drawing/entity_result.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/object_args.h"

namespace {

using Curve = AcDbObjectPointer<AcDbCurve>;

/// Opens the curve that the first argument names; any other result than `done` is the body's.
int openCurve(LispArgs& args, Curve& curve) {
  if (args.empty()) return tooFewArguments;
  AcDbObjectId id;
  if (!getObjectId(args.cursor, id)) return wrongType;
  return curve.open(id, AcDb::kForRead) == Acad::eOk ? done : badData;
}

}  // namespace

int curveGetLength() {
  acedRetNil();
  LispArgs args;
  Curve curve;
  if (const int failed = openCurve(args, curve)) return failed;
  double endParam = 0, length = 0;
  curve->getEndParam(endParam);
  curve->getDistAtParam(endParam, length);
  acedRetReal(length);
  return done;
}

int curveGetPointAtDist() {
  acedRetNil();
  LispArgs args;
  if (args.empty()) return tooFewArguments;
  AcDbObjectId id;
  double distance;
  if (!getObjectId(args.cursor, id) || !getNumber(args.cursor, distance)) return wrongType;
  const Curve curve(id);
  AcGePoint3d point;
  if (curve.openStatus() == Acad::eOk && curve->getPointAtDist(distance, point) == Acad::eOk)
    returnPoint(point);
  return done;
}

int curveGetClosestPointTo() {
  acedRetNil();
  LispArgs args;
  AcDbObjectId id;
  AcGePoint3d given, closest;
  if (!getObjectId(args.cursor, id) || !getPoint3d(args.cursor, given)) return wrongType;
  const Curve curve(id);
  if (curve.openStatus() != Acad::eOk) return badData;
  // As seen in plan view.
  if (curve->getClosestPointTo(given, AcGeVector3d{0, 0, 1}, closest) == Acad::eOk) returnPoint(closest);
  return done;
}

int curveGetDistAtPoint() {
  acedRetNil();
  LispArgs args;
  AcDbObjectId id;
  AcGePoint3d given;
  if (!getObjectId(args.cursor, id) || !getPoint3d(args.cursor, given)) return wrongType;
  const Curve curve(id);
  if (curve.openStatus() != Acad::eOk) return badData;
  double distance = 0;
  if (curve->getDistAtPoint(given, distance) == Acad::eOk) acedRetReal(distance);
  return done;
}
