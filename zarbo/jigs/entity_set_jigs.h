#pragma once

#include <string>

#include "brx/ed_jig.h"
#include "zarbo/jigs/entity_list.h"

/// Drags of clones of entities that are in the drawing. The drawing stays as it is: what the user chose is
/// told, and the application applies it.
class EntitySetJig : public AcEdJig {
 public:
  EntitySetJig(std::wstring prompt, const AcGePoint3d& base) : prompt_(std::move(prompt)), base_(base) {}
  ~EntitySetJig() override { entityList_.deleteEntities(); }

  /// Takes the clones over.
  int setEntityList(const AcDbEntityPtrArray& clones) { return entityList_.setEntityList(clones); }
  /// False when the user cancelled.
  bool run();
  bool endedByEnter() const { return endedByEnter_; }

 protected:
  AcDbEntity* entity() const override { return dragImage(entityList_); }
  void transformClones(const AcGeMatrix3d& matrix);
  const AcGePoint3d& base() const { return base_; }

 private:
  bool endedByEnter_ = false;
  entityList entityList_;
  std::wstring prompt_;
  AcGePoint3d base_;
};

class MultiRotateJig : public EntitySetJig {
 public:
  using EntitySetJig::EntitySetJig;
  /// Radians, in the user coordinate system.
  double angle() const { return angle_; }

 protected:
  bool update() override;
  DragStatus sampler() override;

 private:
  double angle_ = 0, previousAngle_ = 0;
};

class MultiMoveJig : public EntitySetJig {
 public:
  MultiMoveJig(std::wstring prompt, const AcGePoint3d& base)
      : EntitySetJig(std::move(prompt), base), currentPoint_(base), previousPoint_(base) {}
  const AcGePoint3d& currentPoint() const { return currentPoint_; }

 protected:
  bool update() override;
  DragStatus sampler() override;

 private:
  AcGePoint3d currentPoint_, previousPoint_;
};
