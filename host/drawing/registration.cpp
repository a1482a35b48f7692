#include "brx/db_block.h"
#include "brx/db_text.h"
#include "host/drawing/stubs.h"

namespace {

template <class Class>
AcRxObject* create() {
  return new Class;
}

template <class Class>
void add(const ACHAR* name, const ACHAR* parent, AcRxConstructor constructor,
         const ACHAR* dxfName = nullptr) {
  Class::gpDesc = newAcRxClass(name, parent, constructor, dxfName);
}

void registerAll() {
  add<AcDbObject>(L"AcDbObject", L"AcRxObject", nullptr);
  add<AcDbDatabase>(L"AcDbDatabase", L"AcRxObject", nullptr);
  add<AcDbEntity>(L"AcDbEntity", L"AcDbObject", nullptr);
  add<AcDbCurve>(L"AcDbCurve", L"AcDbEntity", nullptr);
  add<AcDbLine>(L"AcDbLine", L"AcDbCurve", create<AcDbLine>, L"LINE");
  add<AcDbArc>(L"AcDbArc", L"AcDbCurve", create<AcDbArc>, L"ARC");
  add<AcDbCircle>(L"AcDbCircle", L"AcDbCurve", create<AcDbCircle>, L"CIRCLE");
  add<AcDbPolyline>(L"AcDbPolyline", L"AcDbCurve", create<AcDbPolyline>, L"LWPOLYLINE");
  add<AcDbPoint>(L"AcDbPoint", L"AcDbEntity", create<AcDbPoint>, L"POINT");
  add<AcDbText>(L"AcDbText", L"AcDbEntity", create<AcDbText>, L"TEXT");
  add<AcDbMText>(L"AcDbMText", L"AcDbEntity", create<AcDbMText>, L"MTEXT");
  add<AcDbBlockReference>(L"AcDbBlockReference", L"AcDbEntity", create<AcDbBlockReference>, L"INSERT");
  add<AcDbSymbolTable>(L"AcDbSymbolTable", L"AcDbObject", nullptr);
  add<AcDbBlockTable>(L"AcDbBlockTable", L"AcDbSymbolTable", create<AcDbBlockTable>, L"TABLE");
  add<AcDbLayerTable>(L"AcDbLayerTable", L"AcDbSymbolTable", create<AcDbLayerTable>, L"TABLE");
  add<AcDbLinetypeTable>(L"AcDbLinetypeTable", L"AcDbSymbolTable", create<AcDbLinetypeTable>, L"TABLE");
  add<AcDbTextStyleTable>(L"AcDbTextStyleTable", L"AcDbSymbolTable", create<AcDbTextStyleTable>, L"TABLE");
  add<AcDbRegAppTable>(L"AcDbRegAppTable", L"AcDbSymbolTable", create<AcDbRegAppTable>, L"TABLE");
  add<AcDbDimStyleTable>(L"AcDbDimStyleTable", L"AcDbSymbolTable", create<AcDbDimStyleTable>, L"TABLE");
  add<AcDbSymbolTableRecord>(L"AcDbSymbolTableRecord", L"AcDbObject", nullptr);
  add<AcDbBlockTableRecord>(L"AcDbBlockTableRecord", L"AcDbSymbolTableRecord", create<AcDbBlockTableRecord>,
                            L"BLOCK_RECORD");
  add<AcDbLayerTableRecord>(L"AcDbLayerTableRecord", L"AcDbSymbolTableRecord", create<AcDbLayerTableRecord>,
                            L"LAYER");
  add<AcDbLinetypeTableRecord>(L"AcDbLinetypeTableRecord", L"AcDbSymbolTableRecord",
                               create<AcDbLinetypeTableRecord>, L"LTYPE");
  add<AcDbTextStyleTableRecord>(L"AcDbTextStyleTableRecord", L"AcDbSymbolTableRecord",
                                create<AcDbTextStyleTableRecord>, L"STYLE");
  add<AcDbRegAppTableRecord>(L"AcDbRegAppTableRecord", L"AcDbSymbolTableRecord",
                             create<AcDbRegAppTableRecord>, L"APPID");
  add<AcDbDimStyleTableRecord>(L"AcDbDimStyleTableRecord", L"AcDbSymbolTableRecord",
                               create<AcDbDimStyleTableRecord>, L"DIMSTYLE");
  acrxBuildClassHierarchy();
}

}  // namespace

void host::registerDatabaseClasses() { [[maybe_unused]] static const bool once = (registerAll(), true); }
