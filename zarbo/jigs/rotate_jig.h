#pragma once

#include <memory>
#include <string>

#include "brx/db_entity.h"
#include "brx/ed_jig.h"

/// Turns a clone of a text or a block reference about its place; clones of other entities stand still while
/// the angle is chosen. The drawing stays as it is.
class RotateJig : public AcEdJig {
 public:
  RotateJig(AcDbObjectId id, std::wstring prompt);

  /// False when the user cancelled.
  bool run();
  bool endedByEnter() const { return endedByEnter_; }
  /// Radians, in the user coordinate system.
  double rotation() const { return rotation_; }

 protected:
  AcDbEntity* entity() const override { return clone_.get(); }
  bool update() override;
  DragStatus sampler() override;

 private:
  double rotation_ = 0;
  bool endedByEnter_ = false;
  AcDbObjectId id_;
  std::unique_ptr<AcDbEntity> clone_;
  AcGePoint3d base_;
  std::wstring prompt_;
};
