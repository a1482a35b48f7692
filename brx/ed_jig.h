#pragma once

#include <string>

#include "brx/db_entity.h"

/// Interactive placement: an image that follows the cursor until the user accepts or cancels.

namespace host {
class Drag;
}

/// `drag` asks the jig's `sampler` again and again; the sampler acquires one input each time. Points are the
/// world's, angles are radians to the left from the X axis of the user coordinate system.
class BRX_API AcEdJig {
 public:
  /// Statuses from 1 are keywords, by their place in the list.
  enum DragStatus : int { kNormal = 0, kNull = -1, kCancel = -4, kNoChange = -6 };
  /// Bits.
  enum UserInputControls : int { kGovernedByOrthoMode = 1, kNullResponseAccepted = 2 };
  enum CursorType : int { kNoSpecialCursor = -1, kCrosshair = 0, kRectCursor = 1, kRubberBand = 2 };

  /// What is shown; the jig's own. Null shows nothing.
  virtual AcDbEntity* entity() const = 0;
  /// Changes the entity by the last sample; false when it looks as before.
  virtual bool update() = 0;
  /// Acquires a sample. `kNoChange` spares the update and the redrawing.
  virtual DragStatus sampler() = 0;
  virtual ~AcEdJig() = default;

  /// Shows the prompt and runs until the user ends it: `kNormal` for an accepted sample, `kNull` for a bare
  /// Enter, `kCancel`, or a keyword.
  DragStatus drag();

  const ACHAR* dispPrompt() const { return prompt_.c_str(); }
  void setDispPrompt(const ACHAR* prompt) { prompt_ = prompt ? prompt : L""; }
  const ACHAR* keywordList() const { return keywords_.c_str(); }
  /// As in `acedInitGet`.
  void setKeywordList(const ACHAR* keywords) { keywords_ = keywords ? keywords : L""; }
  int userInputControls() const { return controls_; }
  void setUserInputControls(int controls) { controls_ = controls; }
  CursorType specialCursorType() const { return cursor_; }
  void setSpecialCursorType(CursorType cursor) { cursor_ = cursor; }

 protected:
  AcEdJig() = default;
  // For the sampler alone: each waits for the next input. The value is left as it was unless the status is
  // `kNormal`. Without a base, an angle or a distance by the cursor asks for two points.
  DragStatus acquirePoint(AcGePoint3d& point);
  DragStatus acquirePoint(AcGePoint3d& point, const AcGePoint3d& base);
  DragStatus acquireAngle(double& angle);
  DragStatus acquireAngle(double& angle, const AcGePoint3d& base);
  DragStatus acquireDist(double& distance);
  DragStatus acquireDist(double& distance, const AcGePoint3d& base);

 private:
  friend class host::Drag;
  std::wstring prompt_, keywords_;
  int controls_ = 0;
  CursorType cursor_ = kNoSpecialCursor;
  host::Drag* drag_ = nullptr;
};
