#pragma once

#include <array>
#include <string>

#include "brx/ge_point.h"
#include "zarbo/frame/lisp_args.h"

/// Duct runs as the application hands them over: flat lists called triples. Lengths are drawing units.

struct TripleRun {
  AcGePoint3d startPoint, endPoint;
  /// Second argument of the application's "convert_rp_dp".
  int32_t coordMode = 0;
  /// Cut off both ends of a straight piece.
  double startTrim = 0, endTrim = 0;
  /// With the wall layers on both sides. Signed as given; readers take `runSectionWidth` and
  /// `runSectionHeight`.
  double width = 0, height = 0;
  std::wstring shapeCode;
  double wallLayer1 = 0, wallLayer2 = 0;
  /// "r", "l"; and "t", "b", "h"; compared exactly.
  std::wstring horizontalAlign, verticalAlign;
  int32_t offsetFlag = 0;
  double verticalOffset = 1.0;
  /// Not in the list: nothing that is read sets these three.
  std::wstring materialCode, lengthText;
  int32_t verticalMarker = 0;
};

/// Unit vectors along the run, of the width and of the height.
using RunBasis = std::array<AcGeVector3d, 3>;

/// The opening and the closing of the list may be missing. False leaves the record half filled, and the
/// cursor anywhere.
bool readTripleRun(ArgCursor& cursor, TripleRun& run);

double runSectionWidth(const TripleRun& run);
double runSectionHeight(const TripleRun& run);

/// The end of the run, taken through the application's "convert_rp_dp" with `convert`; a callback that fails
/// leaves it as it is. With a basis it is moved from the alignment given to the centre line.
AcGePoint3d runStartPoint(const TripleRun& run, const RunBasis* basis, bool convert);
AcGePoint3d runEndPoint(const TripleRun& run, const RunBasis* basis, bool convert);

/// A vertical run takes its width axis from the next one; without one, its height axis is X.
void runBasis(const TripleRun& run, const TripleRun* next, RunBasis& basis, bool convert);

/// By the code in capitals: all but "RD", "OO", "DX" and "OX".
bool isRectangularCode(const std::wstring& shapeCode);
/// By the code as it is, in capitals or in small letters; runs of material "FX" aren't.
bool isRectangularRun(const TripleRun& run);
