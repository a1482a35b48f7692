#include "tests/filing/mixed_drawing.h"

#include <memory>
#include <string>

#include "brx/db_attributes.h"
#include "brx/db_block.h"
#include "brx/db_calls.h"
#include "brx/db_dictionary.h"
#include "brx/db_faces.h"
#include "brx/db_polylines.h"
#include "brx/db_text.h"
#include "brx/lisp_calls.h"

namespace {

constexpr int layerCount = 12;

template <class Table, class Record>
AcDbObjectId addRecord(AcDbDatabase& drawing, const std::wstring& name) {
  AcDbObjectPointer<Table> table(drawing.tableId(Table::desc()), AcDb::kForWrite);
  auto* const record = new Record;
  record->setName(name.c_str());
  AcDbObjectId id;
  table->add(id, record);
  record->close();
  return id;
}

void addLayers(AcDbDatabase& drawing) {
  const AcDbObjectId dashed = addRecord<AcDbLinetypeTable, AcDbLinetypeTableRecord>(drawing, L"DASHED");
  AcDbObjectPointer<AcDbLinetypeTableRecord>(dashed, AcDb::kForWrite)->setPattern(L"__ __ __", {0.5, -0.25});
  for (int i = 0; i < layerCount; ++i) {
    AcDbObjectPointer<AcDbLayerTableRecord> layer(
        addRecord<AcDbLayerTable, AcDbLayerTableRecord>(drawing, L"H-DUCT-Lüftung " + std::to_wstring(i)),
        AcDb::kForWrite);
    AcCmColor colour;
    colour.setColorIndex(static_cast<Adesk::UInt16>(i + 1));
    layer->setColor(colour);
    layer->setLinetypeObjectId(i % 3 ? drawing.continuousLinetype() : dashed);
  }
}

AcDbObjectId addBlock(AcDbDatabase& drawing) {
  const AcDbObjectId id = addRecord<AcDbBlockTable, AcDbBlockTableRecord>(drawing, L"Diffuser");
  AcDbObjectPointer<AcDbBlockTableRecord> block(id, AcDb::kForWrite);
  auto* const definition = new AcDbAttributeDefinition;
  definition->setTag(L"FLOW"), definition->setPrompt(L"Air flow"), definition->setTextString(L"0");
  definition->setHeight(0.2);
  for (AcDbEntity* const each : {static_cast<AcDbEntity*>(new AcDbCircle({0, 0, 0}, {0, 0, 1}, 0.5)),
                                 static_cast<AcDbEntity*>(new AcDbLine({-0.5, 0, 0}, {0.5, 0, 0})),
                                 static_cast<AcDbEntity*>(definition)}) {
    if (block->appendAcDbEntity(each) == Acad::eOk) each->close();
  }
  return id;
}

AcDbEntity* newPolyline(const AcGePoint3d& at) {
  auto* const made = new AcDbPolyline;
  for (unsigned i = 0; i < 5; ++i)
    made->addVertexAt(i, {at.x + i, at.y + i % 2}, i == 2 ? 0.4142 : 0, 0.1, 0.1);
  made->setClosed(true);
  return made;
}

AcDbEntity* newText(const AcGePoint3d& at, int number) {
  return new AcDbText(at, (L"Supply 12½ ° Ø" + std::to_wstring(number)).c_str(), {}, 0.2, 0.5);
}

AcDbEntity* newParagraphs(const AcGePoint3d& at) {
  auto* const made = new AcDbMText;
  made->setLocation(at);
  made->setContents(L"{\\fArial|b1;Fan}\\P2400 m³/h\\P\\S1/2;");
  made->setWidth(5);
  return made;
}

AcDbEntity* newEntity(const AcGePoint3d& at, int number, AcDbObjectId block) {
  switch (number % 10) {
    case 0:
    case 1:
    case 2:
      return new AcDbLine(at, {at.x + 1.25, at.y + 0.75, number % 4 * 0.5});
    case 3:
      return new AcDbCircle(at, {0, 0, 1}, 0.1 + number % 7);
    case 4:
      return new AcDbArc(at, 1.5, 0.3, 2.9);
    case 5:
      return newPolyline(at);
    case 6:
      return newText(at, number);
    case 7:
      return newParagraphs(at);
    case 8:
      return new AcDbPoint(at);
    default: {
      auto* const made = new AcDbBlockReference(at, block);
      made->setRotation(number * 0.01);
      return made;
    }
  }
}

/// Kinds that need their neighbours: attributes, vertices, faces, a group.
void addRare(AcDbBlockTableRecord& space, AcDbDatabase& drawing, AcDbObjectId block) {
  auto* const reference = new AcDbBlockReference({-10, -10, 0}, block);
  space.appendAcDbEntity(reference);
  auto* const attribute = new AcDbAttribute({-10, -10, 0}, L"250", L"FLOW");
  attribute->setHeight(0.2);
  if (reference->appendAttribute(attribute) == Acad::eOk) attribute->close();
  reference->close();
  auto* const old = new AcDb2dPolyline(AcDb::k2dSimplePoly, [] {
    AcGePoint3dArray points;
    for (int i = 0; i < 4; ++i) points.append({-20.0 - i, 1.0 * (i % 2), 0});
    return points;
  }());
  auto* const spatial = new AcDb3dPolyline(AcDb::k3dSimplePoly, [] {
    AcGePoint3dArray points;
    for (int i = 0; i < 4; ++i) points.append({-20.0 - i, 5, 1.0 * i});
    return points;
  }());
  const AcDbObjectIdArray members = [&] {
    AcDbObjectIdArray ids;
    for (AcDbEntity* const each :
         {static_cast<AcDbEntity*>(old), static_cast<AcDbEntity*>(spatial),
          static_cast<AcDbEntity*>(new AcDbFace({0, -5, 0}, {1, -5, 0}, {1, -4, 1}, {0, -4, 1})),
          static_cast<AcDbEntity*>(new AcDbSolid({2, -5, 0}, {3, -5, 0}, {2, -4, 0}, {3, -4, 0}))}) {
      AcDbObjectId id;
      if (space.appendAcDbEntity(id, each) == Acad::eOk) each->close();
      ids.append(id);
    }
    return ids;
  }();
  AcDbObjectPointer<AcDbDictionary> groups(drawing.groupDictionaryId(), AcDb::kForWrite);
  auto* const group = new AcDbGroup(L"Odd ones");
  AcDbObjectId id;
  groups->setAt(L"ODD", group, id);
  for (const AcDbObjectId& each : members) group->append(each);
  group->close();
}

}  // namespace

void drawMixed(AcDbDatabase& drawing, int count) {
  AcDbDatabase* const former = acdbHostWorkingDatabase();
  acdbSetHostWorkingDatabase(&drawing);
  addLayers(drawing);
  const AcDbObjectId block = addBlock(drawing);
  acdbRegApp(L"KORVANE");
  resbuf* const data = acutBuildList(1001, L"KORVANE", 1000, L"flow", 1040, 250.5, 1071, 70000, RTNONE);
  AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId(), AcDb::kForWrite);
  for (int i = 0; i < count; ++i) {
    AcDbEntity* const made = newEntity({i % 500 * 2.0, i / 500 * 2.0, 0}, i, block);
    if (space->appendAcDbEntity(made) != Acad::eOk) {
      delete made;
      continue;
    }
    made->setLayer((L"H-DUCT-Lüftung " + std::to_wstring(i % layerCount)).c_str());
    if (i % 5 == 0) made->setColorIndex(static_cast<Adesk::UInt16>(i % 255 + 1));
    if (i % 10 == 0) made->setXData(data);
    made->close();
  }
  addRare(*space.object(), drawing, block);
  acutRelRb(data);
  acdbSetHostWorkingDatabase(former);
}
