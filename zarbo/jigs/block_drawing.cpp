#include "zarbo/jigs/block_drawing.h"

#include <memory>

#include "brx/db_attributes.h"
#include "brx/db_database.h"
#include "brx/db_leader.h"
#include "brx/db_transactions.h"
#include "zarbo/support/current_drawing.h"

namespace {

/// A file may nest blocks in themselves, or so that they multiply without end.
constexpr int deepestNesting = 64;
constexpr int mostEntities = 1'000'000;

constexpr Adesk::UInt16 byLayer = 256;

/// By the definition's horizontal mode; 0 leaves the text's own.
int columnOf(AcDb::TextHorzMode mode) {
  switch (mode) {
    case AcDb::kTextLeft:
    case AcDb::kTextFit:
      return 1;
    case AcDb::kTextCenter:
    case AcDb::kTextAlign:
    case AcDb::kTextMid:
      return 2;
    case AcDb::kTextRight:
      return 3;
  }
  return 0;
}

void setAttachment(AcDbMText& text, const AcDbAttributeDefinition& definition) {
  const int column = columnOf(definition.horizontalMode());
  if (column == 0) return;
  const int row = definition.verticalMode() == AcDb::kTextTop       ? 0
                  : definition.verticalMode() == AcDb::kTextVertMid ? 1
                                                                    : 2;
  text.setAttachment(static_cast<AcDbMText::AttachmentPoint>(row * 3 + column));
}

class BlockDrawing {
 public:
  BlockDrawing(AcGiWorldDraw& context, const AcDbObjectId& layer, bool keepTransforms)
      : context_(context),
        traits_(context.subEntityTraits()),
        layer_(layer),
        inPlace_(context.regenType() == kAcGiSaveWorldDrawForProxy && !keepTransforms) {}

  void draw(const AcDbBlockReference& reference, const AcGeMatrix3d& parent) {
    if (depth_ == deepestNesting) return;
    const AcDbObjectPointer<AcDbBlockTableRecord> record(reference.blockTableRecord());
    AcDbBlockTableRecordIterator* made = nullptr;
    if (!record.object() || record->newIterator(made) != Acad::eOk) return;
    const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(made);
    ++depth_;
    const AcGeMatrix3d placement =
        inPlace_ ? parent * reference.blockTransform() : reference.blockTransform();
    AcTransaction* const transaction = begin(placement);
    for (; !iterator->done() && drawn_ < mostEntities; iterator->step()) {
      AcDbObjectId id;
      if (iterator->getEntityId(id) == Acad::eOk) drawPart(id, placement, transaction);
    }
    end();
    --depth_;
  }

 private:
  AcTransaction* begin(const AcGeMatrix3d& placement) {
    if (inPlace_) return acTransactionManagerPtr() ? acTransactionManagerPtr()->startTransaction() : nullptr;
    context_.geometry().pushModelTransform(placement);
    return nullptr;
  }
  void end() {
    if (!inPlace_) return context_.geometry().popModelTransform();
    if (acTransactionManagerPtr()) acTransactionManagerPtr()->abortTransaction();
  }

  void drawPart(AcDbObjectId id, const AcGeMatrix3d& placement, AcTransaction* transaction) {
    AcDbObjectPointer<AcDbEntity> entity(id);
    if (!entity.object()) return;
    ++drawn_;
    if (const auto* const nested = AcDbBlockReference::cast(entity.object())) return draw(*nested, placement);
    if (const auto* const definition = AcDbAttributeDefinition::cast(entity.object())) {
      if (definition->isConstant() && !definition->isInvisible()) drawText(*definition, placement);
      return;
    }
    if (entity->isA() == AcDbLeader::desc() && context_.isDragging()) {
      return drawLeader(static_cast<const AcDbLeader&>(*entity.object()));
    }
    traits_.setLayer(layerOf(*entity.object()));
    traits_.setColor(entity->colorIndex());
    if (!inPlace_) {
      entity->worldDraw(&context_);
      return;
    }
    entity.close();
    drawMoved(id, placement, transaction);
  }

  AcDbObjectId layerOf(const AcDbEntity& entity) const {
    return !layer_.isNull() && entity.layer() == L"0" ? layer_ : entity.layerId();
  }

  void drawText(const AcDbAttributeDefinition& definition, const AcGeMatrix3d& placement) {
    AcDbMText text;
    text.setContents(definition.textString());
    text.setLocation(definition.alignmentPoint());
    text.setTextHeight(definition.height());
    text.setTextStyle(definition.textStyle());
    setAttachment(text, definition);
    const AcDbObjectId layer = layerOf(definition);
    text.setLayer(layer, true, false);
    traits_.setLayer(layer);
    text.transformBy(placement);
    // Upright, however the reference is turned.
    text.setRotation(0.0);
    text.setColorIndex(byLayer);
    traits_.setColor(byLayer);
    // The text stands in its place already.
    if (!inPlace_) context_.geometry().popModelTransform();
    text.worldDraw(&context_);
    if (!inPlace_) context_.geometry().pushModelTransform(placement);
  }

  /// Nothing but the line: the rest would trail behind the cursor.
  void drawLeader(const AcDbLeader& leader) {
    traits_.setLayer(leader.layerId());
    traits_.setColor(leader.colorIndex());
    for (int i = 1; i < leader.numVertices(); ++i) {
      const AcGePoint3d ends[] = {leader.vertexAt(i - 1), leader.vertexAt(i)};
      context_.geometry().polyline(2, ends);
    }
  }

  void drawMoved(AcDbObjectId id, const AcGeMatrix3d& placement, AcTransaction* transaction) {
    AcDbEntity* entity = nullptr;
    if (!transaction || transaction->getObject(entity, id, AcDb::kForWrite) != Acad::eOk) return;
    entity->transformBy(placement);
    entity->worldDraw(&context_);
  }

  AcGiWorldDraw& context_;
  AcGiSubEntityTraits& traits_;
  const AcDbObjectId layer_;
  const bool inPlace_;
  int depth_ = 0, drawn_ = 0;
};

}  // namespace

void drawBlock(const AcDbBlockReference& reference, AcGiWorldDraw& context, const AcDbObjectId& layer,
               bool keepTransforms, const AcGeMatrix3d& parent) {
  BlockDrawing(context, layer, keepTransforms).draw(reference, parent);
}
