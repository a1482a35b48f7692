#include "host/entities/block_extents.h"

#include <memory>
#include <vector>

#include "brx/db_attributes.h"
#include "brx/db_block.h"
#include "host/database/kept_for_drawing.h"
#include "host/database/subentities.h"
#include "host/entities/transformed_copy.h"

namespace host {
namespace {

constexpr size_t mostTurns = 1000;

AcGeMatrix3d turnOf(AcGeMatrix3d matrix) {
  for (const unsigned row : {0, 1, 2}) matrix(row, 3) = 0;
  return matrix;
}

BlockExtents::Turn keyOf(const AcGeMatrix3d& turn) {
  BlockExtents::Turn key;
  for (unsigned i = 0; i < 9; ++i) key[i] = turn(i / 3, i % 3) + 0.0;  // both zeros are one
  return key;
}

const BlockExtents::Turn& noTurn() {
  static const BlockExtents::Turn key = keyOf(AcGeMatrix3d::kIdentity);
  return key;
}

/// The box around a placed box.
AcDbExtents placed(const AcDbExtents& box, const AcGeMatrix3d& matrix) {
  AcDbExtents result;
  if (box.isEmpty()) return result;
  const AcGePoint3d low = box.minPoint(), high = box.maxPoint();
  for (int corner = 0; corner < 8; ++corner) {
    result.addPoint(matrix * AcGePoint3d{corner & 1 ? high.x : low.x, corner & 2 ? high.y : low.y,
                                         corner & 4 ? high.z : low.z});
  }
  return result;
}

AcDbExtents shifted(const AcDbExtents& box, const AcGeMatrix3d& matrix) {
  AcDbExtents moved;
  if (box.isEmpty()) return moved;
  const AcGeVector3d way{matrix(0, 3), matrix(1, 3), matrix(2, 3)};
  moved.addPoint(box.minPoint() + way), moved.addPoint(box.maxPoint() + way);
  return moved;
}

AcDbExtents extentsOfCopy(const AcDbEntity& entity, const AcGeMatrix3d& turn) {
  AcDbExtents box;
  if (keyOf(turn) == noTurn()) return entity.getGeomExtents(box), shifted(box, turn);
  AcDbVoidPtrArray copies;
  appendTransformed(entity, turn, copies);
  for (void* each : copies) {
    const std::unique_ptr<AcDbEntity> copy(static_cast<AcDbEntity*>(each));
    copy->getGeomExtents(box);
  }
  return box;
}

/// References of modules' classes may draw what they like.
const AcDbBlockReference* plainReference(const AcDbEntity& entity) {
  return entity.isA() == AcDbBlockReference::desc() ? static_cast<const AcDbBlockReference*>(&entity)
                                                    : nullptr;
}

/// Also of a block that is open for write. Attributes stand for their definitions.
template <class Visit>
void forEachEntityOf(AcDbObjectId record, Visit visit) {
  const auto* const block = AcDbBlockTableRecord::cast(objectOf(record));
  if (!block) return;
  for (const AcDbObjectId& id : block->entityIds()) {
    const auto* const entity = AcDbEntity::cast(objectOf(id));
    if (!entity || id.isErased()) continue;
    const auto* const definition = AcDbAttributeDefinition::cast(entity);
    if (!definition || definition->isConstant()) visit(*entity);
  }
}

/// The ways to the first and last place of a reference's grid in each direction.
template <class Visit>
void forEachOuterCell(const AcDbBlockReference& reference, Visit visit) {
  for (const int column : {0, std::max(reference.columns() - 1, 0)}) {
    for (const int row : {0, std::max(reference.rows() - 1, 0)}) visit(cellShift(reference, column, row));
  }
}

/// Innermost blocks first, with a stack of its own, since files may nest without end.
class Finder {
 public:
  explicit Finder(BlockExtents& extents) : known_(extents.known) {}

  AcDbExtents find(const AcDbBlockReference& reference) {
    want(reference.blockTableRecord(), turnOf(reference.blockTransform()));
    while (!tasks_.empty()) {
      const size_t place = tasks_.size() - 1;
      if (!tasks_[place].opened) open(place);
      if (place + 1 == tasks_.size()) finish(), tasks_.pop_back();
    }
    return boxOfReference(reference, AcGeMatrix3d::kIdentity);
  }

 private:
  struct Task {
    AcDbObjectId record;
    AcGeMatrix3d turn;
    bool opened = false;
  };

  /// An entry is made at once, so that a block inside of itself adds nothing.
  void want(AcDbObjectId record, AcGeMatrix3d turn) {
    auto& boxes = known_[record.stub()];
    if (boxes.contains(keyOf(turn))) return;
    if (boxes.size() >= mostTurns) turn = AcGeMatrix3d::kIdentity;
    if (boxes.try_emplace(keyOf(turn)).second) tasks_.push_back({record, turn});
  }

  void open(size_t place) {
    tasks_[place].opened = true;
    const Task task = tasks_[place];
    forEachEntityOf(task.record, [&](const AcDbEntity& entity) {
      if (const auto* const inner = plainReference(entity)) {
        want(inner->blockTableRecord(), turnOf(task.turn * inner->blockTransform()));
      }
    });
  }

  void finish() {
    const Task& task = tasks_.back();
    AcDbExtents box;
    forEachEntityOf(task.record, [&](const AcDbEntity& entity) {
      const auto* const inner = plainReference(entity);
      box.addExt(inner ? boxOfReference(*inner, task.turn) : extentsOfCopy(entity, task.turn));
    });
    known_[task.record.stub()][keyOf(task.turn)] = box;
  }

  AcDbExtents boxOfReference(const AcDbBlockReference& reference, const AcGeMatrix3d& turn) const {
    const AcGeMatrix3d first = reference.blockTransform();
    AcDbExtents box;
    forEachOuterCell(reference, [&](const AcGeMatrix3d& cell) {
      box.addExt(boxOf(reference.blockTableRecord(), turn * cell * first));
      forEachSubentity<AcDbAttribute>(*subentitiesOf(reference), [&](const AcDbAttribute& attribute) {
        box.addExt(extentsOfCopy(attribute, turn * cell));
      });
    });
    return box;
  }

  AcDbExtents boxOf(AcDbObjectId record, const AcGeMatrix3d& matrix) const {
    const auto block = known_.find(record.stub());
    if (block == known_.end()) return {};
    if (const auto same = block->second.find(keyOf(turnOf(matrix))); same != block->second.end()) {
      return shifted(same->second, matrix);
    }
    const auto plain = block->second.find(noTurn());
    return plain == block->second.end() ? AcDbExtents{} : placed(plain->second, matrix);
  }

  std::map<const AcDbStub*, std::map<BlockExtents::Turn, AcDbExtents>>& known_;
  std::vector<Task> tasks_;
};

}  // namespace

AcGeMatrix3d cellShift(const AcDbBlockReference& reference, int column, int row) {
  const AcGeMatrix3d turned = AcGeMatrix3d::planeToWorld(reference.normal()) *
                              AcGeMatrix3d::rotation(reference.rotation(), {0, 0, 1});
  return AcGeMatrix3d::translation(
      turned * AcGeVector3d{column * reference.columnSpacing(), row * reference.rowSpacing(), 0});
}

AcDbExtents extentsOfReference(const AcDbBlockReference& reference) {
  AcDbExtents box;
  if (reference.blockTableRecord().isNull()) return box;
  AcDbDatabase& drawing = *reference.blockTableRecord().database();
  BlockExtents& extents = keptFor<BlockExtents>(drawing);
  const Adesk::UInt64 changes = drawing.imp().changes;
  if (extents.changes != changes) extents.known.clear(), extents.changes = changes;
  return Finder(extents).find(reference);
}

}  // namespace host
