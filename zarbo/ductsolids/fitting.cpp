#include "zarbo/ductsolids/fitting.h"

#include <algorithm>
#include <cmath>

#include "brx/ge_matrix.h"
#include "zarbo/drawing/model_space.h"
#include "zarbo/support/utilities.h"

PlacedRun placeRun(const TripleRun& run, const TripleRun* next, bool convert) {
  PlacedRun placed{run, {}, convert};
  runBasis(run, next, placed.basis, convert);
  return placed;
}

double transitionLength(const SectionSize& from, bool fromRectangular, const SectionSize& to,
                        bool toRectangular, double angle) {
  const double difference = std::max(std::abs(from.width - to.width), std::abs(from.height - to.height));
  const double length = difference * 0.5 / std::tan(degreesToRadians(angle));
  if (fromRectangular == toRectangular) return length;
  return std::max(length, std::max(from.width, from.height) * 0.5);
}

namespace {

/// The first basis turned so that it runs along the second.
RunBasis turnedTo(const RunBasis& first, const RunBasis& second) {
  // Rounding may carry the product of unit vectors beyond 1.
  const double angle = std::acos(std::clamp(first[0].dotProduct(second[0]), -1.0, 1.0));
  const AcGeVector3d axis = first[0].crossProduct(second[0]);
  if (axis.lengthSqrd() == 0) return first;
  const AcGeMatrix3d turn = AcGeMatrix3d::rotation(angle, axis);
  return {turn * first[0], turn * first[1], turn * first[2]};
}

RunBasis acrossBoth(RunBasis& first, const RunBasis& second) {
  RunBasis made;
  made[0] = second[0];
  first[1] = first[0].crossProduct(made[0]);
  made[1] = first[1];
  first[2] = first[0].crossProduct(first[1]);
  made[2] = made[0].crossProduct(made[1]);
  for (AcGeVector3d* each : {&first[1], &first[2], &made[1], &made[2]}) each->normalize(AcGeContext::gTol);
  return made;
}

}  // namespace

int alignBasis(RunBasis& first, RunBasis& second, const SectionSize& firstSize, bool firstRectangular,
               SectionSize& secondSize) {
  const bool hasSides = firstSize.width != firstSize.height || firstRectangular;
  const RunBasis turned = hasSides ? turnedTo(first, second) : acrossBoth(first, second);
  AcGeTol nearly;
  nearly.setEqualVector(0.01);
  const auto agrees = [&](const AcGeVector3d& axis) { return turned[1].isEqualTo(axis, nearly); };
  if (agrees(second[1])) return 0;
  const bool swapped = !agrees(-second[1]) && (agrees(second[2]) || agrees(-second[2]));
  if (swapped) std::swap(secondSize.width, secondSize.height);
  second = turned;
  return 1;
}

bool addPiece(kv_hvacSolid& solid, const PieceEnd& start, const PieceEnd& end, int detail) {
  return solid.addTransition(start.point, start.rectangular, start.size.width, start.size.height, end.point,
                             end.rectangular, end.size.width, end.size.height, start.basis.data(),
                             end.basis.data(), detail);
}

NewSolid newSolid(BrxSolidKind kind) {
  NewSolid made(kv_hvacSolid::create());
  made->setKind(kind);
  return made;
}

AcDbObjectId appendSolid(NewSolid solid) {
  kv_hvacSolid* const entity = solid.release();
  return appendAndClose(entity) ? entity->objectId() : AcDbObjectId();
}
