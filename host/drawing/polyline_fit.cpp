#include "brx/db_polylines.h"
#include "host/drawing/header_variables.h"
#include "host/drawing/subentities.h"

Acad::ErrorStatus AcDb2dPolyline::straighten() { return Acad::eNotImplementedYet; }
Acad::ErrorStatus AcDb2dPolyline::curveFit() { return Acad::eNotImplementedYet; }
Acad::ErrorStatus AcDb2dPolyline::splineFit() { return Acad::eNotImplementedYet; }
Acad::ErrorStatus AcDb2dPolyline::splineFit(AcDb::Poly2dType, Adesk::Int16) {
  return Acad::eNotImplementedYet;
}
