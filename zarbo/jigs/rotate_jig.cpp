#include "zarbo/jigs/rotate_jig.h"

#include "brx/db_block.h"
#include "brx/db_text.h"
#include "brx/editor_input.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/object_args.h"
#include "zarbo/jigs/jig_functions.h"

namespace {

/// The entity as `T` when it is of that class itself.
template <class T>
T* exactly(AcDbEntity* entity) {
  return entity && entity->isA() == T::desc() ? static_cast<T*>(entity) : nullptr;
}

AcGePoint3d basePointOf(AcDbEntity* entity) {
  if (const auto* const text = exactly<AcDbMText>(entity)) return text->location();
  if (const auto* const reference = exactly<AcDbBlockReference>(entity)) return reference->position();
  AcDbExtents extents;
  if (!entity || entity->getGeomExtents(extents) != Acad::eOk) return {};
  return extents.minPoint();
}

}  // namespace

RotateJig::RotateJig(AcDbObjectId id, std::wstring prompt) : id_(id), prompt_(std::move(prompt)) {
  const AcDbObjectPointer<AcDbEntity> entity(id_);
  if (!entity.object()) return;
  clone_.reset(static_cast<AcDbEntity*>(entity->clone()));
  base_ = basePointOf(entity.object());
}

bool RotateJig::run() {
  setDispPrompt(prompt_.c_str());
  const DragStatus status = drag();
  if (status == kCancel) acedRedraw(nullptr, 0);
  if (status == kNull) endedByEnter_ = true;
  return status != kCancel;
}

AcEdJig::DragStatus RotateJig::sampler() {
  setUserInputControls(kGovernedByOrthoMode | kNullResponseAccepted);
  return acquireAngle(rotation_, base_);
}

bool RotateJig::update() {
  if (auto* const text = exactly<AcDbMText>(clone_.get())) {
    text->setRotation(rotation_);
  } else if (auto* const reference = exactly<AcDbBlockReference>(clone_.get())) {
    reference->setRotation(rotation_);
  }
  return true;
}

int kvRotateJig() {
  acedRetNil();
  LispArgs args;
  AcDbObjectId id;
  std::wstring prompt;
  if (!getObjectId(args.cursor, id) || !getString(args.cursor, prompt)) return wrongType;
  RotateJig jig(id, prompt);
  if (!jig.run()) return done;
  if (jig.endedByEnter()) {
    acedRetT();
  } else {
    acedRetReal(jig.rotation());
  }
  return done;
}
