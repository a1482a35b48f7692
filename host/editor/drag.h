#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "brx/ed_jig.h"
#include "host/editor/request.h"
#include "host/view/display_list.h"

namespace host {

/// One run of a jig. Its result comes from what the user did, not from what the sampler made of it: a click
/// is an accepted sample although the jig calls it no change.
class Drag {
 public:
  explicit Drag(AcEdJig& jig);
  ~Drag();
  Drag(const Drag&) = delete;
  Drag& operator=(const Drag&) = delete;

  AcEdJig::DragStatus run();
  /// Waits for the next input that suits; behind the one that ended the drag, its status at once.
  AcEdJig::DragStatus acquire(Wanted wanted, const AcGePoint3d* base, Answer& answer);
  /// The drag that the jig's sampler serves; null outside of one.
  static Drag* of(AcEdJig& jig) { return jig.drag_; }

 private:
  Request requestFor(Wanted wanted, const AcGePoint3d* base) const;
  AcEdJig::DragStatus take(const Answer& given, bool accepted, Answer& answer);
  void draw();
  void log() const;

  AcEdJig& jig_;
  Drag* const around_;
  std::wstring shown_;
  bool prompted_ = false, asked_ = false;
  std::optional<AcEdJig::DragStatus> end_;
  /// First point of a distance or an angle, in the user coordinate system.
  std::optional<AcGePoint3d> first_;
  int samples_ = 0, updates_ = 0, images_ = 0;
  view::DisplayList image_;
};

/// Something of a drag's image.
struct ImagePart {
  view::Item::Kind kind;
  std::wstring layer;
  int colour;
  /// Points, an arc's centre, start and end, or where a text begins.
  std::vector<AcGePoint3d> points;
  std::wstring text;
};
/// What came of a drag, for scripts.
struct DragRecord {
  std::wstring prompt;
  int samples, updates, images;
  std::vector<ImagePart> image;
};
/// Of the last drags, the oldest first.
std::deque<DragRecord>& dragRecords();

}  // namespace host
