#pragma once

#include <memory>

#include "interfaces/kv_hvac_solid.h"
#include "zarbo/ductsolids/triple_run.h"

/// What the fittings share.

using NewSolid = std::unique_ptr<kv_hvacSolid>;

struct SectionSize {
  double width = 0, height = 0;
  bool operator==(const SectionSize&) const = default;
};

/// A run of one call: its record, its axes and whether its points go through the application.
struct PlacedRun {
  const TripleRun& run;
  RunBasis basis;
  bool convert;

  AcGePoint3d start() const { return runStartPoint(run, &basis, convert); }
  AcGePoint3d end() const { return runEndPoint(run, &basis, convert); }
  SectionSize size() const { return {runSectionWidth(run), runSectionHeight(run)}; }
  bool isRectangular() const { return isRectangularRun(run); }
  bool hasRectangularCode() const { return isRectangularCode(run.shapeCode); }
};
PlacedRun placeRun(const TripleRun& run, const TripleRun* next, bool convert);

constexpr double reducerSlope = 15.0;  // degrees

/// Length of a piece between two sections whose sides slope by `angle` degrees; a change of shape takes half
/// the larger size of the first section at least.
double transitionLength(const SectionSize& from, bool fromRectangular, const SectionSize& to,
                        bool toRectangular, double angle = reducerSlope);

/// Makes the width axis of the second basis agree with that of the first as far as the sides of the section
/// allow, and swaps the second section's sizes where its sides have turned. A round section of equal sizes
/// has no sides: there the first basis is turned as well. 0 when nothing was changed, else 1.
int alignBasis(RunBasis& first, RunBasis& second, const SectionSize& firstSize, bool firstRectangular,
               SectionSize& secondSize);

/// A section's end as `addTransition` takes it.
struct PieceEnd {
  AcGePoint3d point;
  bool rectangular;
  SectionSize size;
  const RunBasis& basis;
};
bool addPiece(kv_hvacSolid& solid, const PieceEnd& start, const PieceEnd& end, int detail);

/// An entity without bodies. The solid module must be there.
NewSolid newSolid(BrxSolidKind kind);

/// What a fitting made; entities are in the drawing, and a null id stands for one that wasn't needed.
struct Fitting {
  AcDbObjectId entities[3];
  double headLength = 0, tailLengths[3] = {};
};

/// To model space, closed; null for none and for one that couldn't be added.
AcDbObjectId appendSolid(NewSolid solid);

// The fittings. False when the geometry refuses; nothing is added to the drawing then.

AcDbObjectId drawStraight(const PlacedRun& run, int detail);
bool drawTransition(const PlacedRun& head, const PlacedRun& tail, int detail, Fitting& fitting);
struct ElbowForm {
  bool square = false, cableTray = false;
  double radiusRatio = 0;  // of the radius to the head's width
};
bool drawElbow(PlacedRun head, PlacedRun tail, ElbowForm form, int detail, Fitting& fitting);
bool drawWye(PlacedRun head, PlacedRun tail1, PlacedRun tail2, int detail, Fitting& fitting);
/// `tap2` is null where there is none.
bool drawTakeoff(PlacedRun mainHead, const PlacedRun& mainTail, const PlacedRun& tap1, const PlacedRun* tap2,
                 int detail, Fitting& fitting);
