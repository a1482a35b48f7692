#include "zarbo/jigs/entity_set_jigs.h"

#include "brx/editor_input.h"

bool EntitySetJig::run() {
  setDispPrompt(prompt_.c_str());
  const DragStatus status = drag();
  if (status == kNull) endedByEnter_ = true;
  acedRedraw(nullptr, 0);
  return status != kCancel;
}

void EntitySetJig::transformClones(const AcGeMatrix3d& matrix) {
  for (AcDbEntity* const each : entityList_.entities()) each->transformBy(matrix);
}

AcEdJig::DragStatus MultiRotateJig::sampler() {
  setUserInputControls(kGovernedByOrthoMode | kNullResponseAccepted);
  previousAngle_ = angle_;
  return acquireAngle(angle_, base());
}

bool MultiRotateJig::update() {
  transformClones(AcGeMatrix3d::rotation(angle_ - previousAngle_, AcGeVector3d::kZAxis, base()));
  return true;
}

AcEdJig::DragStatus MultiMoveJig::sampler() {
  setUserInputControls(kGovernedByOrthoMode | kNullResponseAccepted);
  setSpecialCursorType(kRubberBand);
  const DragStatus status = acquirePoint(currentPoint_, base());
  return status == kNormal && currentPoint_ == previousPoint_ ? kNoChange : status;
}

bool MultiMoveJig::update() {
  transformClones(AcGeMatrix3d::translation(currentPoint_ - previousPoint_));
  previousPoint_ = currentPoint_;
  return true;
}
