#include "zarbo/jigs/rectangle_jig.h"

#include <cmath>

#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"
#include "zarbo/frame/list_builder.h"
#include "zarbo/jigs/jig_functions.h"
#include "zarbo/jigs/user_angle.h"
#include "zarbo/support/plane_geometry.h"
#include "zarbo/support/utilities.h"

namespace {

enum Stage : int { acquiringPoint, acquiringRotation };
constexpr auto cornerKeyword = static_cast<AcEdJig::DragStatus>(1);
constexpr auto middleKeyword = static_cast<AcEdJig::DragStatus>(2);

const ACHAR* const pointPrompt = L"\nSpecify insertion point or [Corner/Middle]: ";
constexpr int corners = 4;

/// To which sides of its corner the rectangle reaches, in X and Y.
struct Sides {
  double x, y;
};
Sides sidesOf(int corner) {
  switch (corner) {
    case 1:
      return {1, 1};
    case 2:
      return {-1, 1};
    case 3:
      return {-1, -1};
    default:
      return {1, -1};
  }
}

}  // namespace

AsdkRectangleJig::AsdkRectangleJig(double height, double width, int corner, bool rotates)
    : fromMiddle_(corner == 0),
      rotates_(rotates),
      corner_(corner),
      height_(height),
      width_(width),
      halfHeight_(height / 2),
      halfWidth_(width / 2) {}

bool AsdkRectangleJig::run() {
  polyline_ = std::make_unique<AcDbPolyline>();
  for (unsigned i = 0; i < corners; ++i) polyline_->addVertexAt(i, {}, 0, -1, -1);
  polyline_->setClosed(true);
  askPoint();
  if (!cancelled_ && rotates_) askRotation();
  vertices_.removeAll();
  keepVertices();
  polyline_.reset();
  return !cancelled_;
}

void AsdkRectangleJig::askPoint() {
  stage_ = acquiringPoint;
  setDispPrompt(pointPrompt);
  DragStatus status;
  do {
    status = drag();
    if (status == kCancel || status == kNull) cancelled_ = true;
  } while (!cancelled_ && (status == cornerKeyword || status == middleKeyword));
}

void AsdkRectangleJig::askRotation() {
  stage_ = acquiringRotation;
  setDispPrompt(L"\nSpecify rotation: ");
  if (drag() == kCancel) cancelled_ = true;
}

AcEdJig::DragStatus AsdkRectangleJig::sampler() {
  return stage_ == acquiringPoint ? samplePoint() : sampleRotation();
}

AcEdJig::DragStatus AsdkRectangleJig::samplePoint() {
  setUserInputControls(kNullResponseAccepted);
  setKeywordList(L"Corner,C Middle,M");
  const DragStatus status = acquirePoint(sampledPoint_);
  if (status == cornerKeyword) nextCorner();
  if (status == middleKeyword) fromMiddle_ = true, corner_ = 0;
  if (status == cornerKeyword || status == middleKeyword) setDispPrompt(pointPrompt);
  if (status != kNormal) return status;
  if (sampledPoint_ == insertionPoint_) return kNoChange;
  insertionPoint_ = sampledPoint_;
  return status;
}

/// From the middle it only comes back to anchoring at a corner.
void AsdkRectangleJig::nextCorner() {
  if (!fromMiddle_) corner_ = corner_ >= corners ? 1 : corner_ + 1;
  fromMiddle_ = false;
}

AcEdJig::DragStatus AsdkRectangleJig::sampleRotation() {
  setKeywordList(L"");
  double angle = 0;
  const DragStatus status = acquireAngle(angle, insertionPoint_);
  if (status != kNormal) return status;
  rotation_ = worldAngle(angle);
  if (rotation_ == previousRotation_) return kNoChange;
  previousRotation_ = rotation_;
  return status;
}

bool AsdkRectangleJig::update() {
  if (stage_ == acquiringPoint) {
    placeVertices();
  } else if (rotates_) {
    turnVertices();
  }
  return true;
}

void AsdkRectangleJig::placeVertices() {
  const double x = insertionPoint_.x, y = insertionPoint_.y;
  if (fromMiddle_) {
    polyline_->setPointAt(0, {x - halfWidth_, y + halfHeight_});
    polyline_->setPointAt(1, {x + halfWidth_, y + halfHeight_});
    polyline_->setPointAt(2, {x + halfWidth_, y - halfHeight_});
    polyline_->setPointAt(3, {x - halfWidth_, y - halfHeight_});
    return;
  }
  const Sides sides = sidesOf(corner_);
  const double farX = x + sides.x * width_, farY = y + sides.y * height_;
  polyline_->setPointAt(0, {x, y});
  polyline_->setPointAt(1, {farX, y});
  polyline_->setPointAt(2, {farX, farY});
  polyline_->setPointAt(3, {x, farY});
}

void AsdkRectangleJig::turnVertices() {
  if (vertices_.isEmpty()) keepVertices();
  const double x = insertionPoint_.x, y = insertionPoint_.y;
  const double c = std::cos(rotation_), s = std::sin(rotation_);
  for (int i = 0; i < vertices_.length(); ++i) {
    const double dx = vertices_[i].x - x, dy = vertices_[i].y - y;
    polyline_->setPointAt(static_cast<unsigned>(i), {c * dx - s * dy + x, s * dx + c * dy + y});
  }
}

void AsdkRectangleJig::keepVertices() {
  for (unsigned i = 0; i < polyline_->numVerts(); ++i) {
    AcGePoint2d point;
    polyline_->getPointAt(i, point);
    vertices_.append(point);
  }
}

AcGePoint3d AsdkRectangleJig::centre() const {
  AcGePoint3d point = insertionPoint_;
  if (fromMiddle_) return point;
  const Sides sides = sidesOf(corner_);
  polarPoint(point, rotation(), sides.x * halfWidth_);
  polarPoint(point, rotation() + sides.y * rightAngle, halfHeight_);
  return point;
}

AcGePoint3d AsdkRectangleJig::vertex(int index) const {
  return index < vertices_.length() ? toPoint3d(vertices_[index]) : AcGePoint3d();
}

int rectangleJigOf() {
  acedRetNil();
  LispArgs args;
  double height, width;
  if (!getReal(args.cursor, height) || !getReal(args.cursor, width)) return wrongType;
  int32_t corner = 1;
  bool rotates = true;
  getLong(args.cursor, corner);
  getFlag(args.cursor, rotates);
  AsdkRectangleJig jig(height, width, corner, rotates);
  if (!jig.run()) return done;
  LispList result;
  beginList(result);
  const auto append = [&](const AcGePoint3d& point) {
    appendValue(result, LispAtom::point(point.x, point.y, point.z));
  };
  append(jig.centre());
  append(jig.vertex(0));
  append(jig.vertex(2));
  appendValue(result, jig.rotation());
  appendValue(result, jig.corner());
  endListAndReturn(result);
  return done;
}
