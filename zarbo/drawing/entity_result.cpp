#include "zarbo/drawing/entity_result.h"

#include "brx/db_calls.h"
#include "brx/lisp_calls.h"
#include "zarbo/drawing/model_space.h"

void returnName(AcDbObjectId object) {
  ads_name name;
  if (acdbGetAdsName(name, object) == Acad::eOk) acedRetName(name, RTENAME);
}

void appendAndReturnName(AcDbEntity* entity) {
  if (!appendToModelSpace(entity)) return;
  returnName(entity->objectId());
  entity->close();
}

void returnPoint(const AcGePoint3d& point) {
  const ads_point xyz = {point.x, point.y, point.z};
  acedRetPoint(xyz);
}
