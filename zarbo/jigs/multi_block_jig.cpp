#include "zarbo/jigs/multi_block_jig.h"

#include <memory>

#include "brx/db_attributes.h"
#include "brx/db_block.h"
#include "brx/db_calls.h"
#include "brx/db_services.h"
#include "brx/editor_input.h"
#include "zarbo/jigs/user_angle.h"

namespace {

enum Stage : int { acquiringPoint, acquiringRotation };

AcDbBlockReference& referenceOf(AcDbEntity* entity) { return static_cast<AcDbBlockReference&>(*entity); }

/// Model space of the working database, open for write; null when it can't be had.
AcDbBlockTableRecord* openWorkingModelSpace() {
  AcDbDatabase* const drawing = acdbHostApplicationServices()->workingDatabase();
  AcDbBlockTable* blocks = nullptr;
  if (!drawing || drawing->getBlockTable(blocks, AcDb::kForRead) != Acad::eOk) return nullptr;
  AcDbBlockTableRecord* space = nullptr;
  blocks->getAt(ACDB_MODEL_SPACE, space, AcDb::kForWrite);
  blocks->close();
  return space;
}

/// The reference stays open for write.
bool appendToSpace(AcDbBlockReference& reference) {
  AcDbBlockTableRecord* const space = openWorkingModelSpace();
  if (!space) return false;
  const Acad::ErrorStatus status = space->appendAcDbEntity(&reference);
  space->close();
  return status == Acad::eOk;
}

void addAttribute(AcDbBlockReference& reference, const AcDbAttributeDefinition& definition) {
  auto attribute = std::make_unique<AcDbAttribute>();
  attribute->setAttributeFromBlock(&definition, reference.blockTransform());
  if (reference.appendAttribute(attribute.get()) == Acad::eOk) attribute.release()->close();
}

/// For each definition whose text isn't the same everywhere.
void addAttributes(AcDbBlockReference& reference) {
  const AcDbObjectPointer<AcDbBlockTableRecord> record(reference.blockTableRecord());
  AcDbBlockTableRecordIterator* made = nullptr;
  if (!record.object() || record->newIterator(made) != Acad::eOk) return;
  const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(made);
  for (; !iterator->done(); iterator->step()) {
    AcDbObjectId id;
    if (iterator->getEntityId(id) != Acad::eOk) continue;
    const AcDbObjectPointer<AcDbAttributeDefinition> definition(id);
    if (definition.object() && !definition->isConstant()) addAttribute(reference, *definition.object());
  }
}

}  // namespace

void multiBlockJig::presetInsertionPoint(const AcGePoint3d& point) {
  position_ = insertionPoint_ = point;
  insertionGiven_ = true;
}

bool multiBlockJig::run(LispList& result) {
  stage_ = acquiringPoint;
  rotation_ = 0.0;
  const bool placed = askPoint() && askRotation();
  if (placed) append(result);
  acedRedraw(nullptr, 0);
  return placed;
}

bool multiBlockJig::askPoint() {
  if (insertionGiven_) return update();
  setDispPrompt(L"\nSpecify insertion point: ");
  return drag() == kNormal;
}

bool multiBlockJig::askRotation() {
  if (!asksRotation_) return true;
  stage_ = acquiringRotation;
  setDispPrompt(L"\nSpecify rotation angle <0>: ");
  const DragStatus status = drag();
  if (status != kNull) return status == kNormal;
  rotation_ = 0.0;
  return update();
}

AcEdJig::DragStatus multiBlockJig::sampler() {
  setUserInputControls(kNullResponseAccepted);
  return stage_ == acquiringPoint ? samplePoint() : sampleRotation();
}

AcEdJig::DragStatus multiBlockJig::samplePoint() {
  AcGePoint3d point;
  const DragStatus status = acquirePoint(point);
  if (status == kCancel || status == kNull) return status;
  if (status == kNormal && point == insertionPoint_) return kNoChange;
  position_ = insertionPoint_ = point;
  return status;
}

AcEdJig::DragStatus multiBlockJig::sampleRotation() {
  double angle = 0;
  const DragStatus status = acquireAngle(angle, insertionPoint_);
  const double rotation = worldAngle(angle);
  if (status == kNormal && rotation == rotation_) return kNoChange;
  rotation_ = rotation;
  return status;
}

bool multiBlockJig::update() {
  for (AcDbEntity* const each : entityList_.entities()) {
    AcDbBlockReference& reference = referenceOf(each);
    if (stage_ == acquiringPoint) {
      // The image of a block with a base point is off by it; what is appended isn't. It is meant so.
      const AcGeVector3d shift = reference.blockTransform().translation() - reference.position().asVector();
      position_ = insertionPoint_;
      position_.x += shift.x, position_.y += shift.y;
      reference.setPosition(position_);
    } else {
      const AcGeMatrix3d turn = AcGeMatrix3d::rotation(rotation_, AcGeVector3d::kZAxis, insertionPoint_);
      reference.setPosition(turn * position_);
      reference.setRotation(rotation_);
    }
  }
  return true;
}

void multiBlockJig::append(LispList& result) {
  AcDbEntityPtrArray appended(0, 8);
  for (AcDbEntity* const each : entityList_.entities()) {
    AcDbBlockReference& reference = referenceOf(each);
    reference.setPosition(insertionPoint_);
    if (appendToSpace(reference)) {
      appended.append(each);
    } else {
      delete each;
    }
  }
  entityList_.clear();
  for (AcDbEntity* const each : appended) addAttributes(referenceOf(each));
  beginList(result);
  for (AcDbEntity* const each : appended) {
    ads_name name;
    acdbGetAdsName(name, each->objectId());
    appendPair(result, L"obj", LispAtom::entity(name));
    each->close();
  }
}
