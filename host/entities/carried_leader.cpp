#include <array>
#include <cwchar>
#include <string_view>

#include "host/entities/carried_transform.h"

namespace host {
namespace {

/// Walks the groups of a leader of many lines. The same codes mean other things in its parts, which stand in
/// braces.
class MultileaderWalk {
 public:
  MultileaderWalk(GroupList& groups, const AcGeMatrix3d& matrix, const PlaneChange& plane)
      : groups_(groups), matrix_(matrix), plane_(plane) {}

  /// False when braces don't pair.
  bool run() {
    for (resbuf* each = groups_.head(); each && each->restype != 0; each = each->rbnext) {
      if (enter(*each) || leave(*each)) continue;
      switch (part_) {
        case context:
          inContext(*each);
          break;
        case leader:
          inLeader(*each);
          break;
        case line:
          inLine(*each);
          break;
        default:
          outside(*each);
      }
    }
    return part_ == none && (matrixCount_ == 0 || matrixCount_ == frame_.size());
  }

 private:
  enum Part { none, context, leader, line };
  struct Brace {
    int code;
    std::wstring_view text;
    Part outer, inner;
  };
  static constexpr Brace opening[] = {{300, L"CONTEXT_DATA{", none, context},
                                      {302, L"LEADER{", context, leader},
                                      {304, L"LEADER_LINE{", leader, line}};
  static constexpr Brace closing[] = {
      {301, L"}", none, context}, {303, L"}", context, leader}, {305, L"}", leader, line}};

  bool enter(const resbuf& group) {
    for (const Brace& each : opening) {
      if (part_ != each.outer || group.restype != each.code || each.text != group.resval.rstring) continue;
      part_ = each.inner;
      return true;
    }
    return false;
  }
  bool leave(const resbuf& group) {
    for (const Brace& each : closing) {
      if (part_ != each.inner || group.restype != each.code || each.text != group.resval.rstring) continue;
      part_ = each.outer;
      return true;
    }
    return false;
  }

  void point(resbuf& group) const { set(group, matrix_ * asPnt3d(group.resval.rpoint)); }
  void direction(resbuf& group) const {
    AcGeVector3d moved = matrix_ * asPnt3d(group.resval.rpoint).asVector();
    if (!moved.isZeroLength()) set(group, AcGePoint3d{} + moved.normalize());
  }
  void factors(resbuf& group) const {
    set(group, AcGePoint3d{} + asPnt3d(group.resval.rpoint).asVector() * plane_.scale);
  }
  static void set(resbuf& group, const AcGePoint3d& to) {
    group.resval.rpoint[0] = to.x, group.resval.rpoint[1] = to.y, group.resval.rpoint[2] = to.z;
  }
  void length(resbuf& group) const { group.resval.rreal *= plane_.scale; }
  void angle(resbuf& group) const { group.resval.rreal = plane_.angle(group.resval.rreal); }

  void inContext(resbuf& group) {
    switch (group.restype) {
      case 10:   // base
      case 12:   // text
      case 15:   // block
      case 110:  // plane
        return point(group);
      case 11:  // normals and axes
      case 13:
      case 14:
      case 111:
      case 112:
        return direction(group);
      case 16:
        return factors(group);
      case 40:
      case 41:
      case 43:
      case 44:
      case 140:
      case 142:
      case 143:
      case 144:
      case 145:
        return length(group);
      case 42:
      case 46:
        return angle(group);
      case 47:
        return placement(group);
      default:
        return;
    }
  }

  /// The block's matrix, row by row.
  void placement(resbuf& group) {
    if (matrixCount_ >= frame_.size()) return;
    frame_[matrixCount_++] = &group;
    if (matrixCount_ < frame_.size()) return;
    AcGeMatrix3d before;
    for (unsigned i = 0; i < frame_.size(); ++i) before(i / 4, i % 4) = frame_[i]->resval.rreal;
    const AcGeMatrix3d behind = matrix_ * before;
    for (unsigned i = 0; i < frame_.size(); ++i) frame_[i]->resval.rreal = behind(i / 4, i % 4);
  }

  void inLeader(resbuf& group) const {
    if (group.restype == 10 || group.restype == 12 || group.restype == 13) point(group);
    if (group.restype == 11) direction(group);
    if (group.restype == 40) length(group);
  }
  void inLine(resbuf& group) const {
    if (group.restype >= 10 && group.restype <= 12) point(group);
    if (group.restype == 40) length(group);
  }
  /// Repeats sizes of the context.
  void outside(resbuf& group) const {
    if (group.restype == 10) factors(group);
    if (group.restype == 41 || group.restype == 42 || group.restype == 45) length(group);
    if (group.restype == 43) angle(group);
  }

  GroupList& groups_;
  const AcGeMatrix3d& matrix_;
  const PlaneChange& plane_;
  Part part_ = none;
  std::array<resbuf*, 16> frame_{};
  size_t matrixCount_ = 0;
};

AcGeVector3d axisOf(const GroupList& groups, int code, const AcGeVector3d& otherwise) {
  const resbuf* const group = groups.find(code);
  const AcGeVector3d axis = group ? asPnt3d(group->resval.rpoint).asVector() : otherwise;
  return axis.isZeroLength() ? otherwise : axis;
}

}  // namespace

bool transformMultileader(GroupList& groups, const AcGeMatrix3d& matrix) {
  const AcGeVector3d normal =
      axisOf(groups, 111, AcGeVector3d::kXAxis).crossProduct(axisOf(groups, 112, AcGeVector3d::kYAxis));
  const PlaneChange plane(matrix, normal.isZeroLength() ? AcGeVector3d::kZAxis : normal.normal());
  return MultileaderWalk(groups, matrix, plane).run();
}

}  // namespace host
