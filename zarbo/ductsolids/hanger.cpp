#include <cmath>

#include "zarbo/ductsolids/fitting.h"
#include "zarbo/ductsolids/solid_functions.h"
#include "zarbo/ductsolids/solid_results.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/support/utilities.h"

/// Hangers: a band around the duct with one rod, or a bar under it with two.

namespace {

/// Lengths are drawing units, the angle radians.
struct Hanger {
  bool band = false;
  AcGePoint3d point;
  double angle = 0, ductWidth = 0, ductHeight = 0;
  bool rectangular = false;
  double rodSize = 0, thickness = 0, topLevel = 0;
  int32_t detail = 0;
  RunBasis basis;

  bool read(ArgCursor& cursor) {
    if (!getFlag(cursor, band) || !getPoint3d(cursor, point) || !getNumber(cursor, angle) ||
        !getNumber(cursor, ductWidth) || !getNumber(cursor, ductHeight) || !getFlag(cursor, rectangular) ||
        !getNumber(cursor, rodSize) || !getNumber(cursor, thickness) || !getNumber(cursor, topLevel) ||
        !getLong(cursor, detail)) {
      return false;
    }
    const double left = angle + rightAngle;
    basis = {AcGeVector3d{std::cos(angle), std::sin(angle), 0},
             AcGeVector3d{std::cos(left), std::sin(left), 0}, AcGeVector3d::kZAxis};
    return true;
  }
};

bool addRod(kv_hvacSolid& solid, const AcGePoint3d& from, const AcGePoint3d& to, const RunBasis& basis,
            const Hanger& hanger) {
  const SectionSize size{hanger.rodSize, hanger.rodSize};
  return addPiece(solid, {from, false, size, basis}, {to, false, size, basis}, hanger.detail);
}

AcGePoint3d atLevel(AcGePoint3d point, double level) { return point.z = level, point; }

bool makeBand(kv_hvacSolid& solid, const Hanger& h) {
  const AcGeVector3d half = h.basis[0] * h.rodSize * 0.5;
  const AcGePoint3d front = h.point - half, back = h.point + half;
  const SectionSize outer{h.ductWidth + 2 * h.thickness, h.ductHeight + 2 * h.thickness};
  if (!addPiece(solid, {front, h.rectangular, outer, h.basis}, {back, h.rectangular, outer, h.basis},
                h.detail)) {
    return false;
  }
  const bool up = h.topLevel > h.point.z;
  const AcGePoint3d foot = h.point + AcGeVector3d::kZAxis * ((up ? 0.5 : -0.5) * h.ductHeight);
  const RunBasis rodBasis = up ? RunBasis{AcGeVector3d::kZAxis, h.basis[0], h.basis[1]}
                               : RunBasis{-AcGeVector3d::kZAxis, h.basis[1], h.basis[0]};
  if (foot.z != h.topLevel && !addRod(solid, foot, atLevel(foot, h.topLevel), rodBasis, h)) return false;
  // The opening leaves nine tenths of the wall.
  const double width = h.ductWidth + 0.2 * h.thickness, height = h.ductHeight + 0.2 * h.thickness;
  return solid.subtractTransition(front, h.rectangular, width, height, back, h.rectangular, width, height,
                                  h.basis.data(), h.basis.data(), h.detail);
}

/// The second rod runs from the level to the bar, and its foot stands above the bar's middle at any level.
bool addRods(kv_hvacSolid& solid, const Hanger& h, const AcGePoint3d& barCentre, double reach) {
  const double half = h.thickness / 2;
  AcGePoint3d first = barCentre - h.basis[1] * reach;
  first.z += h.topLevel > first.z ? half : -half;
  if (first.z == h.topLevel) return true;
  const RunBasis up = {AcGeVector3d::kZAxis, h.basis[0], h.basis[1]};
  if (!addRod(solid, first, atLevel(first, h.topLevel), up, h)) return false;
  AcGePoint3d second = barCentre + h.basis[1] * reach;
  second.z += half;
  const RunBasis fixed = {AcGeVector3d::kZAxis, -AcGeVector3d::kXAxis, -AcGeVector3d::kYAxis};
  return addRod(solid, atLevel(second, h.topLevel), second, fixed, h);
}

bool makeTrapeze(kv_hvacSolid& solid, const Hanger& h) {
  const AcGePoint3d centre = h.point - AcGeVector3d::kZAxis * (h.ductHeight / 2 + h.thickness / 2);
  const double length = h.ductWidth + 4 * h.rodSize;
  if (!addRods(solid, h, centre, length / 2 - h.rodSize)) return false;
  const AcGeVector3d half = h.basis[0] * h.rodSize;
  const SectionSize size{length, h.thickness};
  return addPiece(solid, {centre + half, true, size, h.basis}, {centre - half, true, size, h.basis},
                  h.detail);
}

}  // namespace

int kvDrawHanger() {
  acedRetNil();
  LispArgs args;
  Hanger hanger;
  if (!hanger.read(args.cursor)) return wrongType;
  if (!solidModuleIsThere()) return failedVisibly;
  NewSolid solid = newSolid(BrxSolidKind::hanger);
  if (!(hanger.band ? makeBand(*solid, hanger) : makeTrapeze(*solid, hanger))) return done;
  LispList list;
  beginList(list);
  appendEntity(list, L"hanger", appendSolid(std::move(solid)));
  endListAndReturn(list);
  return done;
}
