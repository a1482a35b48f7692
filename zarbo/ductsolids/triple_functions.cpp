#include "zarbo/drawing/entity_result.h"
#include "zarbo/ductsolids/fitting.h"
#include "zarbo/ductsolids/solid_functions.h"
#include "zarbo/ductsolids/solid_results.h"
#include "zarbo/frame/guarded_call.h"

/// The functions that draw runs and fittings from triples.

namespace {

/// What all of them begin with.
struct Manner {
  bool convert = false;
  int32_t detail = 0;
  bool read(ArgCursor& cursor) { return getFlag(cursor, convert) && getLong(cursor, detail); }
};

/// What can't be read as a triple is none.
const TripleRun* readOptionalRun(ArgCursor& cursor, TripleRun& run) {
  return readTripleRun(cursor, run) ? &run : nullptr;
}

struct LengthKey {
  const ACHAR* key;
  double value;
};

void returnFitting(const Fitting& fitting, size_t entityCount, std::initializer_list<LengthKey> lengths) {
  if (fitting.entities[0].isNull()) return acedRetNil(), void();
  constexpr const ACHAR* entityKeys[] = {L"en1", L"en2", L"en3"};
  LispList list;
  beginList(list);
  for (size_t i = 0; i < entityCount; ++i) appendEntity(list, entityKeys[i], fitting.entities[i]);
  for (const LengthKey& each : lengths) appendPair(list, each.key, each.value);
  endListAndReturn(list);
}

void appendVector(LispList& list, const AcGeVector3d& vector) {
  appendMark(list, RTLB);
  for (const double each : {vector.x, vector.y, vector.z}) appendValue(list, each);
  appendMark(list, RTLE);
}

}  // namespace

int kvDrawTripleCenter() {
  acedRetNil();
  LispArgs args;
  Manner manner;
  TripleRun run, next;
  if (!manner.read(args.cursor) || !readTripleRun(args.cursor, run)) return wrongType;
  const TripleRun* const following = readOptionalRun(args.cursor, next);
  if (!solidModuleIsThere()) return failedVisibly;
  const AcDbObjectId made = drawStraight(placeRun(run, following, manner.convert), manner.detail);
  if (!made.isNull()) returnName(made);
  return done;
}

int kvGetTripleCoord() {
  acedRetNil();
  LispArgs args;
  TripleRun run, next;
  if (!readTripleRun(args.cursor, run)) return wrongType;
  const TripleRun* const following = readOptionalRun(args.cursor, next);
  RunBasis basis;
  runBasis(run, following, basis, true);
  LispList list;
  beginList(list);
  for (const AcGeVector3d& each : basis) appendVector(list, each);
  endListAndReturn(list);
  return done;
}

int kvDrawTripleTransition() {
  acedRetNil();
  LispArgs args;
  Manner manner;
  TripleRun head, tail;
  if (!manner.read(args.cursor) || !readTripleRun(args.cursor, head) || !readTripleRun(args.cursor, tail)) {
    return wrongType;
  }
  if (!solidModuleIsThere()) return failedVisibly;
  Fitting made;
  if (drawTransition(placeRun(head, &tail, manner.convert), placeRun(tail, &head, manner.convert),
                     manner.detail, made)) {
    returnFitting(made, 1, {{L"dHeadLength", made.headLength}, {L"dTailLength", made.tailLengths[0]}});
  }
  return done;
}

namespace {

/// "CABLETRAY" stands in place of the flag for square elbows; another text stands before it.
bool readElbowForm(ArgCursor& cursor, ElbowForm& form) {
  std::wstring word;
  if (getString(cursor, word) && word == L"CABLETRAY") {
    form.cableTray = true;
    return true;
  }
  return getFlag(cursor, form.square);
}

}  // namespace

int kvDrawTripleElbow() {
  acedRetNil();
  LispArgs args;
  Manner manner;
  ElbowForm form;
  double radius = 0;
  TripleRun head, tail;
  if (!manner.read(args.cursor) || !readElbowForm(args.cursor, form) || !getNumber(args.cursor, radius) ||
      !readTripleRun(args.cursor, head) || !readTripleRun(args.cursor, tail)) {
    return wrongType;
  }
  if (!solidModuleIsThere()) return failedVisibly;
  form.radiusRatio = radius / head.width;
  Fitting made;
  if (drawElbow(placeRun(head, &tail, manner.convert), placeRun(tail, &head, manner.convert), form,
                manner.detail, made)) {
    returnFitting(made, 2, {{L"dHeadLength", made.headLength}, {L"dTailLength", made.tailLengths[0]}});
  }
  return done;
}

namespace {

/// The flag and the radius of wyes and takeoffs are part of the protocol, and have no effect on the geometry.
bool skipForm(ArgCursor& cursor) {
  bool flag = false;
  double radius = 0;
  return getFlag(cursor, flag) && getNumber(cursor, radius);
}

}  // namespace

int kvDrawTripleWye() {
  acedRetNil();
  LispArgs args;
  Manner manner;
  TripleRun head, tail1, tail2;
  if (!manner.read(args.cursor) || !skipForm(args.cursor) || !readTripleRun(args.cursor, head) ||
      !readTripleRun(args.cursor, tail1) || !readTripleRun(args.cursor, tail2)) {
    return wrongType;
  }
  if (!solidModuleIsThere()) return failedVisibly;
  Fitting made;
  if (drawWye(placeRun(head, &tail1, manner.convert), placeRun(tail1, &head, manner.convert),
              placeRun(tail2, &head, manner.convert), manner.detail, made)) {
    returnFitting(made, 3,
                  {{L"dHeadLength", made.headLength},
                   {L"dTailLength1", made.tailLengths[0]},
                   {L"dTailLength2", made.tailLengths[1]}});
  }
  return done;
}

int kvDrawTripleTakeoff() {
  acedRetNil();
  LispArgs args;
  Manner manner;
  TripleRun head, tail, tap1, tap2;
  if (!manner.read(args.cursor) || !skipForm(args.cursor) || !readTripleRun(args.cursor, head) ||
      !readTripleRun(args.cursor, tail) || !readTripleRun(args.cursor, tap1)) {
    return wrongType;
  }
  const bool hasTap2 = readOptionalRun(args.cursor, tap2) && tap2.width != 0.0;
  if (!solidModuleIsThere()) return failedVisibly;
  const PlacedRun second = placeRun(tap2, &head, manner.convert);
  Fitting made;
  if (drawTakeoff(placeRun(head, &tail, manner.convert), placeRun(tail, &head, manner.convert),
                  placeRun(tap1, &head, manner.convert), hasTap2 ? &second : nullptr, manner.detail, made)) {
    returnFitting(made, 2,
                  {{L"dHeadLength", made.headLength},
                   {L"dTailLength1", made.tailLengths[0]},
                   {L"dTailLength2", made.tailLengths[1]},
                   {L"dTailLength3", made.tailLengths[2]}});
  }
  return done;
}
