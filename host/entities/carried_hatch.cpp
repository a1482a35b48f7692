#include <cmath>

#include "host/entities/carried_transform.h"

namespace host {
namespace {

/// Walks the groups of a hatch in the order that the format prescribes.
class HatchWalk {
 public:
  HatchWalk(GroupList& groups, const PlaneChange& plane, double elevation)
      : at_(groups.head()), plane_(plane), elevation_(elevation) {}

  bool run() {
    while (at_ && at_->restype != 91) next();
    for (int count = integer(91); good_ && count > 0; --count) path();
    while (good_ && at_) behindPaths();
    return good_;
  }

 private:
  void next() { at_ = at_->rbnext; }
  bool isAt(int code) const { return at_ && at_->restype == code; }

  /// The group, behind which the walk goes on; one of zeros where another is.
  resbuf& take(int code) {
    if (!isAt(code)) return good_ = false, missing_ = {}, missing_;
    resbuf& taken = *at_;
    next();
    return taken;
  }
  int integer(int code) {
    const resbuf& group = take(code);
    return code >= 90 ? static_cast<int>(group.resval.rlong) : group.resval.rint;
  }
  void turnAround(resbuf& flag) const {
    if (plane_.mirrored) flag.resval.rint = flag.resval.rint == 0;
  }
  void point(resbuf& group) const {
    double* const p = group.resval.rpoint;
    const AcGePoint3d moved = plane_.local * AcGePoint3d{p[0], p[1], elevation_};
    p[0] = moved.x, p[1] = moved.y;
  }
  void vector(double& x, double& y) const {
    const AcGeVector3d moved = plane_.local * AcGeVector3d{x, y, 0};
    x = moved.x, y = moved.y;
  }
  void vector(resbuf& group) const { vector(group.resval.rpoint[0], group.resval.rpoint[1]); }
  void length(resbuf& group) const { group.resval.rreal *= plane_.scale; }

  void path() {
    constexpr int isPolyline = 2;
    if (integer(92) & isPolyline) {
      polyline();
    } else {
      for (int edges = integer(93); good_ && edges > 0; --edges) edge();
    }
    for (int sources = integer(97); good_ && sources > 0; --sources) take(330);
  }

  void polyline() {
    take(72), take(73);
    for (int count = integer(93); good_ && count > 0; --count) {
      point(take(10));
      if (isAt(42) && plane_.mirrored) at_->resval.rreal *= -1;
      if (isAt(42)) next();
    }
  }

  void edge() {
    switch (integer(72)) {
      case 1:
        return point(take(10)), point(take(11));
      case 2:
        return arc();
      case 3:
        point(take(10)), vector(take(11)), take(40), take(50), take(51);
        return turnAround(take(73));
      case 4:
        return spline();
      default:
        good_ = false;
    }
  }

  /// Angles of an arc that runs to the right are counted to the right.
  void arc() {
    point(take(10)), length(take(40));
    resbuf &start = take(50), &end = take(51), &left = take(73);
    turnAround(left);
    const double turn = left.resval.rint ? plane_.turn : -plane_.turn;
    start.resval.rreal += turn, end.resval.rreal += turn;
  }

  void spline() {
    for (const int code : {94, 73, 74, 95, 96}) take(code);
    while (isAt(40)) next();
    for (; isAt(10) || isAt(42); next()) {
      if (isAt(10)) point(*at_);
    }
    // Newer files count fit points; the same code counts sources behind the last edge.
    const resbuf* const behind = isAt(97) ? at_->rbnext : nullptr;
    const bool isOfFit = behind && (behind->restype == 97 || behind->restype == 72 ||
                                    (behind->restype >= 11 && behind->restype <= 13));
    if (isOfFit) next();
    for (; isAt(11); next()) point(*at_);
    for (; isAt(12) || isAt(13); next()) vector(*at_);
  }

  void behindPaths() {
    resbuf& group = *at_;
    next();
    switch (group.restype) {
      case 10:  // seeds
        return point(group);
      case 41:
      case 47:
      case 49:
        return length(group);
      case 52:
      case 53:
      case 460:
        group.resval.rreal = plane_.angle(group.resval.rreal);
        return;
      case 43: {  // where a line of the pattern begins
        resbuf& y = take(44);
        const AcGePoint3d moved = plane_.local * AcGePoint3d{group.resval.rreal, y.resval.rreal, elevation_};
        group.resval.rreal = moved.x, y.resval.rreal = moved.y;
        return;
      }
      case 45:
        return vector(group.resval.rreal, take(46).resval.rreal);
      default:
        return;
    }
  }

  resbuf* at_;
  const PlaneChange& plane_;
  const double elevation_;
  bool good_ = true;
  resbuf missing_{};
};

resbuf* findGroup(GroupList& groups, int code) {
  resbuf* each = groups.head();
  while (each && each->restype != code) each = each->rbnext;
  return each;
}

}  // namespace

bool transformHatch(GroupList& groups, const AcGeMatrix3d& matrix) {
  resbuf* const base = findGroup(groups, 10);
  resbuf* const normal = findGroup(groups, 210);
  if (!base || !normal) return false;
  const PlaneChange plane(matrix, asPnt3d(normal->resval.rpoint).asVector());
  const double elevation = std::isnan(base->resval.rpoint[2]) ? 0 : base->resval.rpoint[2];
  if (!HatchWalk(groups, plane, elevation).run()) return false;
  base->resval.rpoint[2] = (plane.local * AcGePoint3d{0, 0, elevation}).z;
  normal->resval.rpoint[0] = plane.normalBehind.x, normal->resval.rpoint[1] = plane.normalBehind.y;
  normal->resval.rpoint[2] = plane.normalBehind.z;
  return true;
}

}  // namespace host
