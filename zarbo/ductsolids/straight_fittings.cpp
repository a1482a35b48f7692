#include "zarbo/ductsolids/fitting.h"

/// Straight pieces, transitions and elbows.

namespace {

constexpr double smallestLength = 0.01;
constexpr double smallestRadiusRatio = 0.501, standardRadiusRatio = 1.5;
constexpr double collarLength = 3.0;

}  // namespace

AcDbObjectId drawStraight(const PlacedRun& run, int detail) {
  AcGePoint3d start = run.start(), end = run.end();
  if (start.distanceTo(end) < smallestLength) return {};
  start += run.basis[0] * run.run.startTrim;
  end = end - run.basis[0] * run.run.endTrim;
  if (start.distanceTo(end) < smallestLength) return {};
  NewSolid solid = newSolid(BrxSolidKind::segment);
  const bool rectangular = run.hasRectangularCode();
  if (!addPiece(*solid, {start, rectangular, run.size(), run.basis},
                {end, rectangular, run.size(), run.basis}, detail)) {
    return {};
  }
  return appendSolid(std::move(solid));
}

bool drawTransition(const PlacedRun& head, const PlacedRun& tail, int detail, Fitting& fitting) {
  const double length =
      transitionLength(head.size(), head.isRectangular(), tail.size(), tail.isRectangular());
  // Without a length there is nothing to draw, and that is no failure.
  if (!(length > 0.0)) return true;
  NewSolid solid = newSolid(BrxSolidKind::transition);
  addPiece(*solid, {head.end(), head.isRectangular(), head.size(), head.basis},
           {tail.start() + tail.basis[0] * length, tail.isRectangular(), tail.size(), tail.basis}, detail);
  fitting.entities[0] = appendSolid(std::move(solid));
  fitting.tailLengths[0] = length;
  return true;
}

namespace {

/// An elbow in the making: the two ends that meet it, and the tail's size at the elbow.
struct Elbow {
  PlacedRun &head, &tail;
  int detail;
  NewSolid solid;
  AcGePoint3d headEnd, tailEnd;
  SectionSize headSize, tailSize;
  bool needsReducer = false;
};

/// The tail's own sizes first, then those of the head one by one: what differs is left to a reducer.
bool makeSquare(Elbow& elbow) {
  AModeler::Point3d headCorners[8], tailCorners[8];
  AcGePoint3d places[8];
  const bool rectangular = elbow.head.hasRectangularCode();
  const SectionSize own = elbow.tailSize, head = elbow.headSize;
  const SectionSize attempts[] = {own, {head.width, own.height}, {own.width, head.height}, head};
  const SectionSize* fits = nullptr;
  for (const SectionSize& each : attempts) {
    if (elbow.solid->addSquareElbowPrep(elbow.headEnd, head.width, head.height, elbow.tailEnd, each.width,
                                        each.height, elbow.head.basis.data(), elbow.tail.basis.data(),
                                        rectangular, headCorners, tailCorners, places, true, collarLength)) {
      fits = &each;
      break;
    }
  }
  if (!fits) return false;
  elbow.needsReducer = fits != attempts;
  elbow.tailSize = *fits;
  return elbow.solid->addSquareElbow(elbow.headEnd, head.width, head.height, elbow.tailEnd, fits->width,
                                     fits->height, elbow.head.basis.data(), elbow.tail.basis.data(),
                                     rectangular, headCorners, tailCorners, places, elbow.detail);
}

bool areLevel(const TripleRun& head, const TripleRun& tail) {
  return head.startPoint.z == head.endPoint.z && tail.startPoint.z == tail.endPoint.z &&
         head.endPoint.z == tail.startPoint.z;
}

bool makeRound(Elbow& elbow, const ElbowForm& form) {
  if (elbow.tailSize != elbow.headSize || elbow.head.isRectangular() != elbow.tail.isRectangular()) {
    elbow.tailSize = elbow.headSize;
    elbow.needsReducer = true;
  }
  const SectionSize size = elbow.headSize;
  const double ratio = form.radiusRatio == 0.0 ? standardRadiusRatio : form.radiusRatio;
  const TripleRun& head = elbow.head.run;
  const bool flat = form.cableTray && areLevel(head, elbow.tail.run);
  if (!elbow.solid->addRadiusElbow(elbow.headEnd, size.width, size.height, head.wallLayer1, head.wallLayer2,
                                   elbow.tailEnd, elbow.tailSize.width, elbow.tailSize.height,
                                   elbow.head.basis.data(), elbow.tail.basis.data(),
                                   elbow.head.hasRectangularCode(), ratio, true, elbow.detail, !flat)) {
    return false;
  }
  if (!flat) return true;
  elbow.solid->clearBodies();
  return elbow.solid->addCableTraySquareRadiusElbow(elbow.headEnd, size.width, size.height, elbow.tailEnd,
                                                    elbow.head.basis.data(), elbow.tail.basis.data(), ratio,
                                                    elbow.detail);
}

}  // namespace

bool drawElbow(PlacedRun head, PlacedRun tail, ElbowForm form, int detail, Fitting& fitting) {
  if (form.radiusRatio > 0.0 && form.radiusRatio <= 0.5) form.radiusRatio = smallestRadiusRatio;
  const AcGePoint3d headAtCorner = head.end(), tailAtCorner = tail.start();
  Elbow elbow{head,         tail,       detail,      newSolid(BrxSolidKind::elbow),
              head.start(), tail.end(), head.size(), tail.size()};
  alignBasis(head.basis, tail.basis, elbow.headSize, head.isRectangular(), elbow.tailSize);
  const SectionSize tailOwn = elbow.tailSize;
  if (!(form.square ? makeSquare(elbow) : makeRound(elbow, form))) return false;
  NewSolid reducer;
  if (elbow.needsReducer) {
    reducer = newSolid(BrxSolidKind::transition);
    const double length =
        transitionLength(elbow.tailSize, head.isRectangular(), tailOwn, tail.isRectangular());
    const AcGePoint3d next = elbow.tailEnd + tail.basis[0] * length;
    addPiece(*reducer, {elbow.tailEnd, head.isRectangular(), elbow.tailSize, tail.basis},
             {next, tail.isRectangular(), tailOwn, tail.basis}, detail);
    elbow.tailEnd = next;
  }
  fitting.entities[0] = appendSolid(std::move(elbow.solid));
  fitting.entities[1] = appendSolid(std::move(reducer));
  fitting.headLength = head.basis[0].dotProduct(headAtCorner - elbow.headEnd);
  fitting.tailLengths[0] = tail.basis[0].dotProduct(elbow.tailEnd - tailAtCorner);
  return true;
}
