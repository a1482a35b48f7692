#include "zarbo/ductsolids/triple_run.h"

#include <algorithm>

#include "platform/text/letters.h"
#include "zarbo/frame/application_call.h"
#include "zarbo/support/plane_geometry.h"
#include "zarbo/support/utilities.h"

namespace {

bool readPoint(ArgCursor& cursor, AcGePoint3d& point) {
  return getNumber(cursor, point.x) && getNumber(cursor, point.y) && getNumber(cursor, point.z);
}

bool readSection(ArgCursor& cursor, TripleRun& run) {
  if (!getNumber(cursor, run.width) || !getNumber(cursor, run.height) || !getString(cursor, run.shapeCode) ||
      !getNumber(cursor, run.wallLayer1) || !getNumber(cursor, run.wallLayer2)) {
    return false;
  }
  const double layers = 2 * run.wallLayer1 + 2 * run.wallLayer2;
  run.width += layers;
  run.height += layers;
  return true;
}

bool readAlignment(ArgCursor& cursor, TripleRun& run) {
  return getString(cursor, run.horizontalAlign) && getString(cursor, run.verticalAlign) &&
         getLong(cursor, run.offsetFlag) && getNumber(cursor, run.verticalOffset);
}

/// Where the application draws a point; the point itself when the call fails or gives something else.
AcGePoint3d convertedPoint(const AcGePoint3d& point, int32_t coordMode) {
  ApplicationCall call(L"convert_rp_dp");
  call.reals({point.x, point.y, point.z}).longInteger(coordMode).invoke();
  const resbuf* const answer = call.answer();
  return answer && answer->restype == RT3DPOINT ? asPnt3d(answer->resval.rpoint) : point;
}

double heightShift(const TripleRun& run) {
  const double half = runSectionHeight(run) / 2;
  if (run.verticalAlign == L"t") return -half;
  if (run.verticalAlign == L"b") return half;
  if (run.verticalAlign == L"h") return run.offsetFlag != 0 ? half + run.verticalOffset : half;
  return 0;
}

double widthShift(const TripleRun& run) {
  const double half = runSectionWidth(run) / 2;
  if (run.horizontalAlign == L"r") return -half;
  if (run.horizontalAlign == L"l") return half;
  return 0;
}

AcGePoint3d placed(const AcGePoint3d& given, const TripleRun& run, const RunBasis* basis, bool convert) {
  AcGePoint3d point = convert ? convertedPoint(given, run.coordMode) : given;
  if (basis) point += (*basis)[2] * heightShift(run) + (*basis)[1] * widthShift(run);
  return point;
}

bool isVertical(const TripleRun& run) {
  return run.verticalMarker == -1 || toPoint2d(run.startPoint) == toPoint2d(run.endPoint);
}

constexpr const wchar_t* roundCodes[] = {L"RD", L"OO", L"DX", L"OX"};
constexpr const wchar_t* smallRoundCodes[] = {L"rd", L"oo", L"dx", L"ox"};

template <size_t count>
bool isOneOf(const std::wstring& text, const wchar_t* const (&words)[count]) {
  return std::find(std::begin(words), std::end(words), text) != std::end(words);
}

}  // namespace

bool readTripleRun(ArgCursor& cursor, TripleRun& run) {
  skipListBegin(cursor);
  if (!readPoint(cursor, run.startPoint) || !readPoint(cursor, run.endPoint) ||
      !getLong(cursor, run.coordMode) || !getNumber(cursor, run.startTrim) ||
      !getNumber(cursor, run.endTrim) || !readSection(cursor, run) || !readAlignment(cursor, run)) {
    return false;
  }
  skipListEnd(cursor);
  return true;
}

double runSectionWidth(const TripleRun& run) { return std::abs(run.width); }
double runSectionHeight(const TripleRun& run) { return std::abs(run.height); }

AcGePoint3d runStartPoint(const TripleRun& run, const RunBasis* basis, bool convert) {
  return placed(run.startPoint, run, basis, convert);
}

AcGePoint3d runEndPoint(const TripleRun& run, const RunBasis* basis, bool convert) {
  return placed(run.endPoint, run, basis, convert);
}

void runBasis(const TripleRun& run, const TripleRun* next, RunBasis& basis, bool convert) {
  const AcGePoint3d start = runStartPoint(run, nullptr, convert), end = runEndPoint(run, nullptr, convert);
  basis[0] = end - start;
  if (!isVertical(run)) {
    const double left = angleOfPoints(start, end) + rightAngle;
    basis[2] = basis[0].crossProduct({std::cos(left), std::sin(left), 0});
  } else if (next) {
    RunBasis ofNext;
    runBasis(*next, nullptr, ofNext, convert);
    basis[2] = basis[0].crossProduct(ofNext[1]);
  } else {
    basis[2] = AcGeVector3d::kXAxis;
  }
  basis[1] = basis[2].crossProduct(basis[0]);
  for (AcGeVector3d& each : basis) each.normalize(AcGeContext::gTol);
}

bool isRectangularCode(const std::wstring& shapeCode) { return !isOneOf(upperCased(shapeCode), roundCodes); }

bool isRectangularRun(const TripleRun& run) {
  if (isOneOf(run.shapeCode, roundCodes) || isOneOf(run.shapeCode, smallRoundCodes)) return false;
  return run.materialCode != L"FX";
}
