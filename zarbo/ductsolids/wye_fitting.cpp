#include "zarbo/ductsolids/fitting.h"

namespace {

constexpr double collarLength = 3.0;

/// A tail at the wye: where it leaves, its size there, and whether a reducer brings it to its own.
struct WyeTail {
  PlacedRun& run;
  AcGePoint3d end;
  SectionSize size;
  bool needsReducer;
};

/// A tail of the head's shape that shares a size with it keeps its width; others begin with the head's
/// section.
WyeTail settleTail(const PlacedRun& head, PlacedRun& tail) {
  WyeTail settled{tail, tail.end(), tail.size(), false};
  const SectionSize own = head.size();
  const bool sharesSize = own.width == settled.size.width || own.height == settled.size.height;
  if (sharesSize && head.isRectangular() == tail.isRectangular()) {
    settled.needsReducer = own.height != settled.size.height;
    settled.size.height = own.height;
  } else {
    settled.size = own;
    settled.needsReducer = true;
  }
  return settled;
}

/// A reducer that its sections refuse is added all the same, without a body: its length counts.
NewSolid makeReducer(const PlacedRun& head, WyeTail& tail, int detail) {
  if (!tail.needsReducer) return nullptr;
  NewSolid reducer = newSolid(BrxSolidKind::transition);
  const PlacedRun& run = tail.run;
  const double length = transitionLength(tail.size, head.isRectangular(), run.size(), run.isRectangular());
  const AcGePoint3d next = tail.end + run.basis[0] * length;
  addPiece(*reducer, {tail.end, head.isRectangular(), tail.size, run.basis},
           {next, run.isRectangular(), run.size(), run.basis}, detail);
  tail.end = next;
  return reducer;
}

bool makeWye(kv_hvacSolid& solid, PlacedRun& head, AcGePoint3d& headEnd, AcGePoint3d& headFar, WyeTail& first,
             WyeTail& second, int detail) {
  AModeler::Point3d corners[3][8];
  AcGePoint3d places[3][8];
  const SectionSize size = head.size();
  const bool rectangular = head.isRectangular();
  RunBasis &a = head.basis, &b = first.run.basis, &c = second.run.basis;
  return solid.addWyePrep(headEnd, size.width, size.height, first.end, first.size.width, first.size.height,
                          second.end, second.size.width, second.size.height, a.data(), b.data(), c.data(),
                          rectangular, corners[0], corners[1], corners[2], places[0], places[1], places[2],
                          true, collarLength) &&
         solid.addWye(headEnd, size.width, size.height, first.end, first.size.width, first.size.height,
                      second.end, second.size.width, second.size.height, headFar, a.data(), b.data(),
                      c.data(), rectangular, corners[0], corners[1], corners[2], places[0], places[1],
                      places[2], detail);
}

}  // namespace

bool drawWye(PlacedRun head, PlacedRun tail1, PlacedRun tail2, int detail, Fitting& fitting) {
  AcGePoint3d headEnd = head.start(), headFar = head.end();
  const AcGePoint3d firstStart = tail1.start(), secondStart = tail2.start();
  WyeTail first = settleTail(head, tail1), second = settleTail(head, tail2);
  NewSolid solid = newSolid(BrxSolidKind::wye);
  if (!makeWye(*solid, head, headEnd, headFar, first, second, detail)) return false;
  NewSolid reducer1 = makeReducer(head, first, detail), reducer2 = makeReducer(head, second, detail);
  fitting.entities[0] = appendSolid(std::move(solid));
  fitting.entities[1] = appendSolid(std::move(reducer1));
  fitting.entities[2] = appendSolid(std::move(reducer2));
  fitting.headLength = headFar.distanceTo(headEnd);
  fitting.tailLengths[0] = firstStart.distanceTo(first.end);
  fitting.tailLengths[1] = secondStart.distanceTo(second.end);
  return true;
}
