#pragma once

#include "brx/ed_jig.h"
#include "zarbo/frame/list_builder.h"
#include "zarbo/jigs/entity_list.h"

/// Inserts new block references, all at one point and in one rotation. Those that it hasn't appended are
/// deleted with it.
class multiBlockJig : public AcEdJig {
 public:
  multiBlockJig(bool asksRotation, double scale) : asksRotation_(asksRotation), scale_(scale) {}
  ~multiBlockJig() override { entityList_.deleteEntities(); }

  /// The user isn't asked for a point then.
  void presetInsertionPoint(const AcGePoint3d& point);
  int setEntityList(const AcDbEntityPtrArray& references) { return entityList_.setEntityList(references); }
  /// Asks, and appends the references to model space; `result` receives ("obj" . name) for each. False when
  /// the user ended it: then nothing is left.
  bool run(LispList& result);

 protected:
  AcDbEntity* entity() const override { return dragImage(entityList_); }
  bool update() override;
  DragStatus sampler() override;

 private:
  bool askPoint();
  bool askRotation();
  DragStatus samplePoint();
  DragStatus sampleRotation();
  void append(LispList& result);

  entityList entityList_;
  bool asksRotation_;
  bool insertionGiven_ = false;
  double scale_;
  AcGePoint3d position_;
  double rotation_ = 0;
  int stage_ = 0;
  AcGePoint3d insertionPoint_;
};
